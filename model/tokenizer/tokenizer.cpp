// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tokenizer/tokenizer.h"

#include "tokenizer/bytetext.h"
#include "tokenizer/pieces.h"

#include <limits>
#include <stdexcept>

namespace lumora::training {

namespace {

constexpr std::size_t mostKnownPieces = 300000;

} // namespace

Tokenizer::Tokenizer(std::vector<Merge> merges)
    : m_merges(std::move(merges))
    , m_texts({"<|im_start|>", "<|im_end|>"})
    , m_bytes({"", ""})
{
    const auto add = [this](const std::string &text, const std::string &bytes) {
        if (!m_tokens.try_emplace(text, static_cast<Token>(m_texts.size())).second)
            return;
        m_texts.push_back(text);
        m_bytes.push_back(bytes);
    };
    for (unsigned byte = 0; byte < 256; ++byte)
        add(printable(static_cast<unsigned char>(byte)), {static_cast<char>(byte)});
    for (std::size_t rank = 0; rank < m_merges.size(); ++rank) {
        const auto &[left, right] = m_merges[rank];
        if (!m_tokens.contains(left) || !m_tokens.contains(right))
            throw std::runtime_error(std::string("merge ")
                                         .append(std::to_string(rank + 1))
                                         .append(" is not of two tokens: ")
                                         .append(left)
                                         .append(" ")
                                         .append(right));
        m_ranks.emplace(m_merges[rank], rank);
        add(left + right, m_bytes[m_tokens.at(left)] + m_bytes[m_tokens.at(right)]);
    }
}

Tokenizer Tokenizer::read(std::istream &input)
{
    std::vector<Merge> merges;
    Merge merge;
    while (input >> merge.first) {
        if (!(input >> merge.second))
            throw std::runtime_error("the last merge has one token only");
        merges.push_back(merge);
    }
    return Tokenizer(std::move(merges));
}

void Tokenizer::write(std::ostream &output) const
{
    for (const auto &[left, right] : m_merges)
        output << left << ' ' << right << '\n';
}

std::vector<std::string> Tokenizer::split(std::string_view piece) const
{
    constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
    std::vector<std::string> parts;
    for (const char byte : piece)
        parts.push_back(printable(static_cast<unsigned char>(byte)));
    for (;;) {
        std::size_t best = none;
        std::size_t place = 0;
        for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
            const auto found = m_ranks.find({parts[i], parts[i + 1]});
            if (found != m_ranks.end() && found->second < best) {
                best = found->second;
                place = i;
            }
        }
        if (best == none)
            return parts;
        parts[place] += parts[place + 1];
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(place) + 1);
    }
}

std::vector<Token> Tokenizer::encode(std::string_view text) const
{
    std::vector<Token> tokens;
    for (const std::string_view piece : pieces(text)) {
        if (m_known.size() > mostKnownPieces)
            m_known.clear();
        const auto [known, isNew] = m_known.try_emplace(std::string(piece));
        if (isNew)
            for (const std::string &part : split(piece))
                known->second.push_back(m_tokens.at(part));
        tokens.insert(tokens.end(), known->second.begin(), known->second.end());
    }
    return tokens;
}

std::string Tokenizer::decode(const std::vector<Token> &tokens) const
{
    std::string bytes;
    for (const Token token : tokens)
        bytes += m_bytes.at(static_cast<std::size_t>(token));
    return bytes;
}

} // namespace lumora::training
