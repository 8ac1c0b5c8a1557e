// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/heldout.h"

#include "trainer/packer.h"
#include "trainer/threads.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <utility>

namespace lumora::training {

namespace {

constexpr int tokensPerBatch = 4096;

/// A batch, and which passages stand in it, in the order of their targets.
struct Group
{
    Batch batch;
    std::vector<const Passage *> passages;
};

int targetsOf(const Passage &passage)
{
    return static_cast<int>(std::ranges::count(passage.supervised, 1));
}

std::vector<Group> grouped(const std::vector<Passage> &passages)
{
    std::vector<Group> groups;
    Packer packer(tokensPerBatch);
    std::vector<const Passage *> members;
    const Passage *before = nullptr;
    const auto close = [&](std::optional<Batch> batch) {
        if (batch)
            groups.push_back({std::move(*batch), std::exchange(members, {})});
    };
    for (const Passage &passage : passages) {
        const auto system = [](const Passage &one) { return std::span(one.tokens).first(one.systemSize); };
        if (before != nullptr && !std::ranges::equal(system(*before), system(passage)))
            close(packer.takeRest());
        close(packer.add(passage));
        members.push_back(&passage);
        before = &passage;
    }
    close(packer.takeRest());
    return groups;
}

void count(const Group &group, const Network::Prediction &prediction, HeldOut::Result &result)
{
    std::size_t target = 0;
    for (const Passage *const passage : group.passages) {
        bool isRight = true;
        for (int i = 0; i < targetsOf(*passage); ++i, ++target)
            isRight = isRight && prediction.tokens[target] == group.batch.targets[target].token;
        HeldOut::Score &score = result.tasks[passage->task];
        ++score.passages;
        score.right += isRight ? 1 : 0;
    }
}

} // namespace

HeldOut::HeldOut(std::vector<Passage> passages)
    : m_passages(std::move(passages))
{
    std::erase_if(m_passages, [](const Passage &passage) { return passage.tokens.size() > tokensPerBatch; });
    std::ranges::stable_sort(m_passages, [](const Passage &left, const Passage &right) {
        return std::ranges::lexicographical_compare(std::span(left.tokens).first(left.systemSize),
                                                    std::span(right.tokens).first(right.systemSize));
    });
}

HeldOut::Result HeldOut::look(std::span<Network> networks, std::span<const float> weights) const
{
    const std::vector<Group> groups = grouped(m_passages);
    Result result;
    std::atomic<std::size_t> next = 0;
    std::mutex mutex; // guards the result
    std::size_t targets = 0;
    onThreads(static_cast<int>(networks.size()), [&](int thread) {
        for (std::size_t i = next++; i < groups.size(); i = next++) {
            const Network::Prediction prediction = networks[thread].predict(weights, groups[i].batch);
            const std::scoped_lock lock(mutex);
            result.loss += prediction.loss;
            targets += prediction.tokens.size();
            count(groups[i], prediction, result);
        }
    });
    result.loss /= static_cast<double>(std::max<std::size_t>(targets, 1));
    return result;
}

std::string HeldOut::Result::text() const
{
    std::string line = "loss " + std::to_string(loss).substr(0, 5);
    Score all;
    for (const auto &[task, score] : tasks) {
        line += ", " + task + ' ' + std::to_string(100 * score.right / score.passages) + " %";
        all.passages += score.passages;
        all.right += score.right;
    }
    return line + "; all " + std::to_string(100 * all.right / std::max(all.passages, 1)) + " %";
}

} // namespace lumora::training
