// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/passage.h"
#include "trainer/batch.h"

#include <set>
#include <vector>

namespace lumora::training {

/// The passage alone, its positions counted from its start; nothing is shared.
Batch batchOf(const Passage &passage);

/// Lays passages out in so many batches of about the same size, or fewer. Passages with the same system's message
/// follow one another, otherwise in the order in which they came, and in a batch the message stands once for all of
/// them.
std::vector<Batch> pack(std::vector<Passage> passages, int batches);

/// Counts the tokens of passages that are packed together.
class TokenCount
{
public:
    void add(const Passage &passage);
    int tokens() const { return m_tokens; }

private:
    int m_tokens = 0;
    std::set<std::vector<Token>> m_systems; // that count already
};

} // namespace lumora::training
