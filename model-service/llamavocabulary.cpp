// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamavocabulary.h"

#include "core/failure.h"

#include <array>
#include <limits>

namespace lumora::service {

namespace {

constexpr int specialAttributes = LLAMA_TOKEN_ATTR_CONTROL | LLAMA_TOKEN_ATTR_UNKNOWN;

bool isThoughtMark(std::string_view text)
{
    return text == "<think>" || text == "</think>";
}

} // namespace

LlamaVocabulary::LlamaVocabulary(const llama_vocab *vocab)
    : m_vocab(vocab)
{
    for (Token token = 0; token < size(); ++token) {
        const std::string text = llama_vocab_get_text(m_vocab, token);
        if ((llama_vocab_get_attr(m_vocab, token) & specialAttributes) != 0 && text.size() > 1)
            m_specialTexts.push_back(text);
    }
}

std::vector<Token> LlamaVocabulary::tokenize(std::string_view text, SpecialTokens special) const
{
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max() / 2))
        throw promptTooLong();
    const auto length = static_cast<int>(text.size());
    const bool recognise = special == SpecialTokens::recognised;
    // No vocabulary makes more tokens than a text has bytes, apart from one for a space before it.
    std::vector<Token> tokens(text.size() + 1);
    int count = llama_tokenize(m_vocab, text.data(), length, tokens.data(), length + 1, false, recognise);
    if (count < 0 && count != std::numeric_limits<int>::min()) {
        tokens.resize(static_cast<std::size_t>(-count));
        count = llama_tokenize(m_vocab, text.data(), length, tokens.data(), -count, false, recognise);
    }
    if (count < 0)
        throw internalFailure("a text could not be made into tokens");
    tokens.resize(static_cast<std::size_t>(count));
    return tokens;
}

std::optional<Token> LlamaVocabulary::openingToken() const
{
    const Token first = llama_vocab_bos(m_vocab);
    return llama_vocab_get_add_bos(m_vocab) && first != LLAMA_TOKEN_NULL ? std::optional(first) : std::nullopt;
}

std::string LlamaVocabulary::tokenBytes(Token token) const
{
    const char *const text = llama_vocab_get_text(m_vocab, token);
    if (text != nullptr && isThoughtMark(text))
        return text;
    std::array<char, 256> buffer{};
    const int size = llama_token_to_piece(m_vocab, token, buffer.data(), static_cast<int>(buffer.size()), 0, false);
    if (size >= 0)
        return {buffer.data(), static_cast<std::size_t>(size)};
    std::string bytes(static_cast<std::size_t>(-size), '\0');
    llama_token_to_piece(m_vocab, token, bytes.data(), -size, 0, false);
    return bytes;
}

bool LlamaVocabulary::endsTurn(Token token) const
{
    return llama_vocab_is_eog(m_vocab, token);
}

int LlamaVocabulary::size() const
{
    return llama_vocab_n_tokens(m_vocab);
}

} // namespace lumora::service
