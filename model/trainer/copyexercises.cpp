// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/copyexercises.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <ranges>
#include <utility>

namespace lumora::training {

namespace {

constexpr std::size_t mostSeen = 200000;
constexpr const char *taskName = "copy exercise";

void append(Passage &passage, const std::vector<Token> &tokens, bool supervised)
{
    passage.tokens.insert(passage.tokens.end(), tokens.begin(), tokens.end());
    passage.supervised.resize(passage.tokens.size(), supervised ? 1 : 0);
}

} // namespace

CopyExercises::CopyExercises(int vocabulary, std::uint32_t seed)
    : m_vocabulary(vocabulary)
    , m_random(seed)
{
}

void CopyExercises::show(const std::vector<Token> &tokens)
{
    for (const Token token : tokens) {
        if (token < Tokenizer::firstByte)
            continue;
        if (m_seen.size() < mostSeen)
            m_seen.push_back(token);
        else
            m_seen[m_nextSeen] = token;
        m_nextSeen = (m_nextSeen + 1) % mostSeen;
    }
}

Passage CopyExercises::make(int longest)
{
    if (chance(0.5))
        return sentences();
    return chance(0.6) ? repetition(longest) : questions();
}

Passage CopyExercises::repetition(int longest)
{
    constexpr int longestOften = 16;
    std::vector<Token> repeated = span(number(3, longest));
    if (chance(0.17)) { // of few different tokens, so that one place has to be told from its likes
        const std::vector<Token> few = span(std::max(3, static_cast<int>(repeated.size()) / 2));
        for (Token &token : repeated)
            token = few[static_cast<std::size_t>(number(0, static_cast<int>(few.size()) - 1))];
    }
    Passage passage{taskName, {}, {}, 0};
    append(passage, {Tokenizer::messageStart}, false);
    append(passage, repeated, false);
    const int times = repeated.size() < longestOften ? number(1, 3) : 1;
    for (int i = 0; i < times; ++i) {
        append(passage, {Tokenizer::messageStart}, false);
        append(passage, repeated, true);
        append(passage, {Tokenizer::messageEnd}, true);
    }
    return passage;
}

Passage CopyExercises::questions()
{
    const int count = number(2, 6);
    const std::vector<Token> separator = span(1);
    std::vector<std::pair<std::vector<Token>, std::vector<Token>>> entries;
    Passage passage{taskName, {}, {}, 0};
    append(passage, {Tokenizer::messageStart}, false);
    for (int i = 0; i < count; ++i) {
        const auto &[key, value] = entries.emplace_back(span(number(1, 3)), span(number(1, 6)));
        append(passage, key, false);
        append(passage, value, false);
        append(passage, separator, false);
    }
    std::ranges::shuffle(entries, m_random);
    entries.resize(std::min<std::size_t>(entries.size(), 3));
    for (const auto &[key, value] : entries) {
        append(passage, {Tokenizer::messageStart}, false);
        append(passage, key, false);
        append(passage, {Tokenizer::messageStart}, false);
        append(passage, value, true);
        append(passage, {Tokenizer::messageEnd}, true);
    }
    return passage;
}

Passage CopyExercises::sentences()
{
    // Where the first token stands near to the others it is found soonest.
    const int longest = chance(0.2) ? 2 : chance(0.4) ? 5 : 12;
    // A full stop is followed by a space, which is not the sentence's.
    const std::vector<Token> end = chance(0.5)
                                       ? std::vector<Token>{Tokenizer::firstByte + '.', Tokenizer::firstByte + ' '}
                                       : std::vector<Token>{Tokenizer::firstByte + '\n'};
    // As in real texts, some words stand in many sentences, and do not tell which one is meant.
    const std::vector<Token> common = span(3);
    std::vector<std::vector<Token>> all(static_cast<std::size_t>(number(2, 8)));
    std::vector<Token> text{Tokenizer::messageStart};
    for (std::vector<Token> &sentence : all) {
        sentence = span(number(2, longest));
        for (Token &token : sentence)
            token = chance(0.2) ? common[static_cast<std::size_t>(number(0, 2))] : token;
        text.insert(text.end(), sentence.begin(), sentence.end());
        text.insert(text.end(), end.begin(), end.end());
    }

    // Before the text one question fits, behind it one for each sentence.
    const bool isAskedBefore = chance(0.4);
    Passage passage{taskName, {}, {}, 0};
    if (!isAskedBefore)
        append(passage, text, false);
    std::ranges::shuffle(all, m_random);
    all.resize(isAskedBefore ? 1 : all.size());
    for (const std::vector<Token> &sentence : all) {
        const std::vector<Token> asked = question(sentence, text, common);
        append(passage, {Tokenizer::messageStart}, false);
        if (asked.empty())
            continue;
        append(passage, asked, false);
        if (isAskedBefore)
            append(passage, text, false);
        append(passage, {Tokenizer::messageStart}, false);
        append(passage, sentence, true);
        append(passage, {Tokenizer::messageEnd}, true);
    }
    return passage;
}

/// Some tokens that only this sentence of the text has, but for its first one, which could be copied from here, among
/// others that say nothing. Empty where it has none.
std::vector<Token> CopyExercises::question(const std::vector<Token> &sentence, const std::vector<Token> &text,
                                           const std::vector<Token> &common)
{
    std::vector<Token> only;
    std::ranges::copy_if(sentence | std::views::drop(1), std::back_inserter(only),
                         [&](Token token) { return std::ranges::count(text, token) == 1; });
    std::vector<Token> asked;
    std::ranges::sample(only, std::back_inserter(asked), number(1, 3), m_random);
    if (asked.empty())
        return asked;
    std::ranges::copy_if(common, std::back_inserter(asked), [this](Token) { return chance(0.3); });
    if (chance(0.3))
        asked.push_back(span(1).front()); // found nowhere
    std::ranges::shuffle(asked, m_random);
    return asked;
}

std::vector<Token> CopyExercises::span(int size)
{
    const bool isUniform = m_seen.empty() || chance(0.4);
    std::vector<Token> tokens;
    tokens.reserve(static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i)
        tokens.push_back(isUniform ? number(Tokenizer::firstByte, m_vocabulary - 1)
                                   : m_seen[static_cast<std::size_t>(number(0, static_cast<int>(m_seen.size()) - 1))]);
    return tokens;
}

int CopyExercises::number(int least, int most)
{
    return std::uniform_int_distribution(least, most)(m_random);
}

bool CopyExercises::chance(double share)
{
    return std::bernoulli_distribution(share)(m_random);
}

} // namespace lumora::training
