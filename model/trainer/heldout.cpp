// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/heldout.h"

#include "trainer/packer.h"
#include "trainer/threads.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace lumora::training {

namespace {

constexpr int tokensPerBatch = 4096;

std::size_t targetsOf(const Passage &passage)
{
    return static_cast<std::size_t>(std::ranges::count(passage.supervised, 1));
}

bool isRight(const Network::Prediction &prediction, const Batch &batch, std::size_t from, std::size_t to)
{
    for (std::size_t i = from; i < to; ++i)
        if (prediction.tokens[i] != batch.targets[i].token)
            return false;
    return true;
}

} // namespace

HeldOut::HeldOut(std::vector<Passage> passages)
    : m_passages(std::move(passages))
{
    std::erase_if(m_passages, [](const Passage &passage) { return passage.tokens.size() > tokensPerBatch; });
    // As they are packed.
    std::ranges::stable_sort(m_passages, [](const Passage &left, const Passage &right) {
        return std::ranges::lexicographical_compare(std::span(left.tokens).first(left.systemSize),
                                                    std::span(right.tokens).first(right.systemSize));
    });
    TokenCount count;
    for (const Passage &passage : m_passages)
        count.add(passage);
    m_batches = pack(m_passages, count.tokens() / tokensPerBatch + 1);
}

HeldOut::Result HeldOut::look(std::span<Network> networks, std::span<const float> weights) const
{
    std::vector<Network::Prediction> predictions(m_batches.size());
    std::atomic<std::size_t> next = 0;
    onThreads(static_cast<int>(networks.size()), [&](int thread) {
        for (std::size_t i = next++; i < m_batches.size(); i = next++)
            predictions[i] = networks[thread].predict(weights, m_batches[i]);
    });

    Result result;
    std::size_t targets = 0;
    auto passage = m_passages.begin();
    for (std::size_t batch = 0; batch < m_batches.size(); ++batch) {
        result.loss += predictions[batch].loss;
        targets += m_batches[batch].targets.size();
        for (std::size_t from = 0; from < m_batches[batch].targets.size(); ++passage) {
            const std::size_t to = from + targetsOf(*passage);
            Score &score = result.tasks[passage->task];
            ++score.passages;
            score.right += isRight(predictions[batch], m_batches[batch], from, to) ? 1 : 0;
            from = to;
        }
    }
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
