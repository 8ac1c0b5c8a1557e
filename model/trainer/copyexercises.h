// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/passage.h"

#include <cstdint>
#include <random>
#include <vector>

namespace lumora::training {

/// Exercises in copying, of tokens without sense: a span that is repeated, or questions about keys that each had a
/// value. Copying is what most answers are made of, and these teach it more densely than conversations do.
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
    Passage sentences(); ///< sentences, and a few tokens of one, of which it is to be written from its beginning
    std::vector<Token> span(int size);
    int number(int least, int most);
    bool chance(double share);

    int m_vocabulary;
    std::mt19937 m_random;
    std::vector<Token> m_seen;
    std::size_t m_nextSeen = 0;
};

} // namespace lumora::training
