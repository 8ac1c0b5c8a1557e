// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/passage.h"

#include <cstdint>
#include <random>
#include <vector>

namespace lumora::training {

/// Exercises in finding and copying, of tokens without sense: a span that is repeated, questions about keys that each
/// had a value, or about sentences. Most answers are made of this, and these teach it more densely than conversations.
class CopyExercises
{
public:
    CopyExercises(int vocabulary, std::uint32_t seed);

    /// Some tokens are drawn from what was shown, so that frequent ones are frequent here, too.
    void show(const std::vector<Token> &tokens);

    /// longest: of a span, in tokens.
    Passage make(int longest);

private:
    Passage repetition(int longest);
    Passage questions();
    Passage sentences(); ///< a few tokens of a sentence ask for the whole of it, behind the text or before it
    std::vector<Token> question(const std::vector<Token> &sentence, const std::vector<Token> &text,
                                const std::vector<Token> &common);
    std::vector<Token> span(int size);
    int number(int least, int most);
    bool chance(double share);

    int m_vocabulary;
    std::mt19937 m_random;
    std::vector<Token> m_seen;
    std::size_t m_nextSeen = 0;
};

} // namespace lumora::training
