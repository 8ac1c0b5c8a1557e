// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"

#include <llama.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::service {

/// A loaded model's tokens. Lives no longer than the model.
class LlamaVocabulary
{
public:
    explicit LlamaVocabulary(const llama_vocab *vocab);

    std::vector<Token> tokenize(std::string_view text, SpecialTokens special) const;
    std::optional<Token> openingToken() const;
    const std::vector<std::string> &specialTexts() const { return m_specialTexts; }
    std::string tokenBytes(Token token) const;
    bool endsTurn(Token token) const;
    int size() const;
    const llama_vocab *handle() const { return m_vocab; }

private:
    const llama_vocab *m_vocab;
    std::vector<std::string> m_specialTexts;
};

} // namespace lumora::service
