// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tokenizer/tokenizer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lumora::training {

/// How often each piece stands in the texts that were shown.
class PieceCounts
{
public:
    void add(std::string_view text);
    const std::unordered_map<std::string, std::int64_t> &counts() const { return m_counts; }

private:
    std::unordered_map<std::string, std::int64_t> m_counts;
};

/// Learns merges for a vocabulary of this many tokens, or fewer where the texts have no more to merge.
///
/// Digits are never merged, so that each is a token and a number is copied digit by digit. Merges are learned from
/// words without the space before them; the last ones, a given number, put a space before the most frequent words that
/// are one token by then. So a rare name is split the same way with and without a space, and what was learned about the
/// one serves the other.
std::vector<Merge> learnMerges(const PieceCounts &pieces, std::size_t vocabularySize, std::size_t wordsWithSpace);

} // namespace lumora::training
