// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumora::tinymodel {

/// What a token is good for. Which kind follows which is all that the model knows.
enum class Kind : std::uint8_t {
    other,
    control,
    endOfTurn,
    turnStart, // the line break after "assistant"
    // Free text
    firstArticle,
    nextArticle,
    article,
    adjective,
    noun,
    verb,
    preposition,
    conjunction,
    sentenceEnd,
    paragraphEnd,
    accentedStem, // of a word whose last character comes in two tokens
    accentLead,
    accentTail,
    // JSON
    openText,
    openList,
    emptyList,
    openObject,
    quote,
    quoteComma,
    quoteList,
    quoteObject,
    quoteColon,
    colon,
    comma,
    closeList,
    closeObject,
    firstWord,
    word,
    call, // {"tool":
    count,
};

/// A byte-level vocabulary, as GGUF's "gpt2" tokenizer wants it.
class Vocabulary
{
public:
    /// Padded with further words up to the given size.
    explicit Vocabulary(std::size_t size);

    const std::vector<std::string> &texts() const { return m_texts; }
    const std::vector<std::int32_t> &types() const { return m_types; }
    const std::vector<Kind> &kinds() const { return m_kinds; }
    const std::vector<std::string> &merges() const { return m_merges; }
    std::int32_t endOfText() const { return m_endOfText; }
    std::int32_t endOfTurn() const { return m_endOfTurn; }

private:
    void addWord(std::string_view word, Kind kind);
    void fill(std::size_t size);
    std::int32_t add(const std::string &text, Kind kind);
    std::int32_t addControl(const std::string &text, Kind kind);

    std::vector<std::string> m_texts;
    std::vector<std::int32_t> m_types;
    std::vector<Kind> m_kinds;
    std::vector<std::string> m_merges;
    std::int32_t m_endOfText = 0;
    std::int32_t m_endOfTurn = 0;
};

} // namespace lumora::tinymodel
