// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/packer.h"

#include <algorithm>
#include <span>

namespace lumora::training {

namespace {

void appendTokens(Batch &batch, const Passage &passage, std::size_t from, std::size_t to)
{
    for (std::size_t i = from; i < to; ++i) {
        if (passage.supervised[i] != 0)
            batch.targets.push_back({batch.size() - 1, passage.tokens[i]});
        batch.tokens.push_back(passage.tokens[i]);
        batch.positions.push_back(static_cast<int>(i));
    }
}

std::span<const Token> systemOf(const Passage &passage)
{
    return std::span(passage.tokens).first(passage.systemSize);
}

/// before: the passage that stands before it in the batch, if one does.
void append(Batch &batch, const Passage &passage, const Passage *before)
{
    const auto prefix = static_cast<int>(passage.systemSize);
    int prefixBegin = batch.segments.empty() ? 0 : batch.segments.back().prefixBegin;
    if (before == nullptr || !std::ranges::equal(systemOf(*before), systemOf(passage))) {
        prefixBegin = batch.size();
        if (prefix > 0)
            batch.segments.push_back({prefixBegin, prefix, 0, 0});
        appendTokens(batch, passage, 0, passage.systemSize);
    }
    const auto own = static_cast<int>(passage.tokens.size()) - prefix;
    batch.segments.push_back({batch.size(), own, prefixBegin, prefix});
    appendTokens(batch, passage, passage.systemSize, passage.tokens.size());
}

} // namespace

Batch batchOf(const Passage &passage)
{
    Batch batch;
    batch.segments.push_back({0, static_cast<int>(passage.tokens.size())});
    appendTokens(batch, passage, 0, passage.tokens.size());
    return batch;
}

void TokenCount::add(const Passage &passage)
{
    const auto system = systemOf(passage);
    const bool isNew = m_systems.emplace(system.begin(), system.end()).second;
    m_tokens += static_cast<int>(passage.tokens.size() - (isNew ? 0 : passage.systemSize));
}

std::vector<Batch> pack(std::vector<Passage> passages, int batches)
{
    std::ranges::stable_sort(passages, [](const Passage &left, const Passage &right) {
        return std::ranges::lexicographical_compare(systemOf(left), systemOf(right));
    });
    TokenCount all;
    for (const Passage &passage : passages)
        all.add(passage);
    std::vector<Batch> packed;
    const Passage *before = nullptr;
    for (const Passage &passage : passages) {
        const bool isFull = packed.empty() || packed.back().size() >= all.tokens() / batches;
        if (isFull && packed.size() < static_cast<std::size_t>(batches)) {
            packed.emplace_back();
            before = nullptr;
        }
        append(packed.back(), passage, before);
        before = &passage;
    }
    return packed;
}

} // namespace lumora::training
