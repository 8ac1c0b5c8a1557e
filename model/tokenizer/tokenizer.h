// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/chatvocabulary.h"

#include <cstddef>
#include <istream>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace lumora::training {

using service::Token;

/// Two tokens' texts that become one token, as printable characters.
using Merge = std::pair<std::string, std::string>;

/// Byte pairs: a text is cut into pieces, a piece into bytes, and of these the two that stand first in the list of
/// merges become one, again and again. Every text has tokens, and tokens give the text back. The first two tokens are
/// the marks of a message's beginning and end, then the 256 bytes, then what the merges make. Used by one thread at a
/// time, since it remembers pieces.
class Tokenizer
{
public:
    static constexpr Token messageStart = 0;
    static constexpr Token messageEnd = 1;
    static constexpr Token firstByte = 2;

    explicit Tokenizer(std::vector<Merge> merges);

    /// One merge a line. Throws std::runtime_error where a line is no merge of tokens that there are.
    static Tokenizer read(std::istream &input);
    void write(std::ostream &output) const;

    /// Marks are read as the characters that they are written with. text: valid UTF-8.
    std::vector<Token> encode(std::string_view text) const;

    /// The tokens within one piece, as printable characters.
    std::vector<std::string> split(std::string_view piece) const;

    /// The bytes that the tokens write; none for the marks.
    std::string decode(const std::vector<Token> &tokens) const;

    std::size_t size() const { return m_texts.size(); }

    /// Of every token, as a model file has it: printable characters.
    const std::vector<std::string> &texts() const { return m_texts; }
    const std::vector<Merge> &merges() const { return m_merges; }

private:
    std::vector<Merge> m_merges;
    std::map<Merge, std::size_t> m_ranks;
    std::vector<std::string> m_texts;
    std::vector<std::string> m_bytes;
    std::unordered_map<std::string, Token> m_tokens;
    mutable std::unordered_map<std::string, std::vector<Token>> m_known; // pieces
};

} // namespace lumora::training
