// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/packer.h"

#include <utility>

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

void append(Batch &batch, const Passage &passage)
{
    const auto prefix = static_cast<int>(passage.systemSize);
    if (batch.tokens.empty() && prefix > 0) {
        batch.segments.push_back({0, prefix, 0, 0});
        appendTokens(batch, passage, 0, passage.systemSize);
    }
    const auto own = static_cast<int>(passage.tokens.size()) - prefix;
    batch.segments.push_back({batch.size(), own, 0, prefix});
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

Packer::Packer(int capacity)
    : m_capacity(capacity)
{
}

// The first token after the system's message is nobody's target, since it opens the user's.
std::optional<Batch> Packer::add(const Passage &passage)
{
    if (passage.tokens.size() > static_cast<std::size_t>(m_capacity))
        return std::nullopt;
    const std::vector<Token> system(passage.tokens.begin(),
                                    passage.tokens.begin() + static_cast<std::ptrdiff_t>(passage.systemSize));
    Batch &open = m_open[system];
    const auto added = static_cast<int>(passage.tokens.size() - (open.tokens.empty() ? 0 : passage.systemSize));
    std::optional<Batch> full;
    if (open.size() + added > m_capacity)
        full = std::exchange(open, {});
    append(open, passage);
    return full;
}

std::optional<Batch> Packer::takeRest()
{
    if (m_open.empty())
        return std::nullopt;
    return std::move(m_open.extract(m_open.begin()).mapped());
}

} // namespace lumora::training
