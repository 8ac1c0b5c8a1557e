// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "vocabulary.h"

#include <llama.h>

#include <algorithm>
#include <array>
#include <unordered_set>

namespace lumora::tinymodel {

namespace {

struct Words
{
    Kind kind;
    std::vector<std::string_view> words;
};

// The words of JSON texts are others than those of free text: that is how the model knows where it is.
const std::vector<Words> lists = {
    {Kind::firstArticle, {"The", "A", "One"}},
    {Kind::nextArticle, {" The", " A", " One"}},
    {Kind::article, {" the", " a", " every"}},
    {Kind::adjective, {" small", " quiet", " green", " early", " open", " warm", " old", " clear"}},
    {Kind::noun, {" river", " garden", " road", " window", " stone", " letter", " hill", " song", " boat", " lamp"}},
    {Kind::verb, {" follows", " meets", " finds", " keeps", " shows", " leaves", " crosses"}},
    {Kind::preposition, {" under", " near", " behind", " with"}},
    {Kind::conjunction, {" and", " or"}},
    {Kind::sentenceEnd, {"."}},
    {Kind::paragraphEnd, {"\n\n"}},
    {Kind::accentedStem, {" caf"}},
    {Kind::openText, {" \""}},
    {Kind::openList, {" [\""}},
    {Kind::emptyList, {" []"}},
    {Kind::openObject, {" {", "{\""}},
    {Kind::quoteComma, {"\","}},
    {Kind::quoteList, {"\"]"}},
    {Kind::quoteObject, {"\"}"}},
    {Kind::quoteColon, {"\":"}},
    {Kind::firstWord, {"Plan", "Look", "Think", "Write", "Check", "Begin"}},
    {Kind::word, {" about", " again", " before", " first", " later", " other", " people", " place", " what", " when"}},
    // Nothing but shorter prompts: words that are common in English and in what the program itself writes.
    {Kind::other, {" to",      " of",    " in",   " is",       " you",    " that",  " it",       " for",    " on",
                   " are",     " this",  " user", " message",  " latest", " tool",  " document", " answer", " question",
                   " current", " date",  " time", "ing",       "tion",    "User",   "Assistant", "system",  "assistant",
                   "user",     "string", "type",  "arguments", "title",   "summary"}},
};

const std::vector<std::pair<char, Kind>> byteKinds = {
    {'\n', Kind::turnStart},    {'"', Kind::quote},         {':', Kind::colon},      {',', Kind::comma},
    {']', Kind::closeList},     {'}', Kind::closeObject},   {'{', Kind::openObject}, {'.', Kind::sentenceEnd},
    {'\xC3', Kind::accentLead}, {'\xA9', Kind::accentTail},
};

void appendUtf8(std::string &text, unsigned value)
{
    if (value < 0x80) {
        text += static_cast<char>(value);
    } else {
        text += static_cast<char>(0xC0U | (value >> 6U));
        text += static_cast<char>(0x80U | (value & 0x3FU));
    }
}

/// How the tokenizer writes a byte: printable ones as the character of that value, the others from U+0100 on, in order.
std::string written(char byte)
{
    const auto isPrintable = [](unsigned value) {
        return (value >= 0x21 && value <= 0x7E) || (value >= 0xA1 && value <= 0xAC) || value >= 0xAE;
    };
    const unsigned value = static_cast<unsigned char>(byte);
    std::string text;
    if (isPrintable(value)) {
        appendUtf8(text, value);
        return text;
    }
    unsigned others = 0;
    for (unsigned lower = 0; lower < value; ++lower)
        others += isPrintable(lower) ? 0 : 1;
    appendUtf8(text, 0x100 + others);
    return text;
}

std::string written(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes)
        text += written(byte);
    return text;
}

} // namespace

Vocabulary::Vocabulary(std::size_t size)
{
    for (int byte = 0; byte < 256; ++byte)
        add(written(static_cast<char>(byte)), Kind::other);
    for (const auto &[byte, kind] : byteKinds)
        m_kinds[static_cast<unsigned char>(byte)] = kind;
    for (const Words &list : lists)
        for (const std::string_view text : list.words)
            addWord(text, list.kind);
    add(written("{\"tool\":"), Kind::call); // which no text is read as: the model alone writes it
    m_endOfText = addControl("<|endoftext|>", Kind::control);
    addControl("<|im_start|>", Kind::control);
    m_endOfTurn = addControl("<|im_end|>", Kind::endOfTurn);
    if (m_texts.size() < size)
        fill(size);
}

// Every text of one small letter, of two, and so on, each a token behind a blank. A text is read back as the tokens
// that wrote it, and a token has about as many letters as in a real vocabulary.
void Vocabulary::fill(std::size_t size)
{
    std::unordered_set<std::string> known(m_texts.begin(), m_texts.end());
    std::unordered_set<std::string> knownMerges(m_merges.begin(), m_merges.end());
    std::vector<std::string> beginnings = {written(' ')};
    while (m_texts.size() < size) {
        std::vector<std::string> longer;
        for (const std::string &beginning : beginnings) {
            for (char letter = 'a'; letter <= 'z' && m_texts.size() < size; ++letter) {
                longer.push_back(beginning + letter);
                if (knownMerges.insert(beginning + ' ' + letter).second)
                    m_merges.push_back(beginning + ' ' + letter);
                if (known.insert(longer.back()).second)
                    add(longer.back(), Kind::other);
            }
        }
        beginnings = std::move(longer);
    }
}

// Merges byte after byte, so that every beginning of a word is a token as well.
void Vocabulary::addWord(std::string_view word, Kind kind)
{
    std::string beginning = written(word.front());
    for (const char byte : word.substr(1)) {
        const std::string merge = beginning + ' ' + written(byte);
        beginning += written(byte);
        if (std::ranges::find(m_merges, merge) == m_merges.end())
            m_merges.push_back(merge);
        if (std::ranges::find(m_texts, beginning) == m_texts.end())
            add(beginning, Kind::other);
    }
    if (kind != Kind::other)
        m_kinds[static_cast<std::size_t>(std::ranges::find(m_texts, beginning) - m_texts.begin())] = kind;
}

std::int32_t Vocabulary::add(const std::string &text, Kind kind)
{
    m_texts.push_back(text);
    m_types.push_back(LLAMA_TOKEN_TYPE_NORMAL);
    m_kinds.push_back(kind);
    return static_cast<std::int32_t>(m_texts.size()) - 1;
}

std::int32_t Vocabulary::addControl(const std::string &text, Kind kind)
{
    const std::int32_t token = add(text, kind);
    m_types.back() = LLAMA_TOKEN_TYPE_CONTROL;
    return token;
}

} // namespace lumora::tinymodel
