// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/chatvocabulary.h"
#include "tokenizer/tokenizer.h"

namespace lumora::training {

/// The layout that the built-in model is trained on: <|im_start|>ROLE, a line break, the text, <|im_end|>, a line
/// break.
extern const char *const chatTemplate;

/// The built-in model's tokens and layout, without an engine: what the engine makes of a chat with the exported file.
class TrainingVocabulary final : public service::ChatVocabulary
{
public:
    explicit TrainingVocabulary(Tokenizer tokenizer);

    const Tokenizer &tokenizer() const { return m_tokenizer; }

    std::vector<Token> tokenize(std::string_view text, service::SpecialTokens special) const override;
    std::optional<Token> openingToken() const override { return std::nullopt; }
    const std::vector<std::string> &specialTexts() const override { return m_specialTexts; }
    /// The messages, and the opening of the reply.
    std::string layOut(std::span<const service::ChatMessage> messages) const;
    std::optional<std::string> applyTemplate(std::span<const service::ChatMessage> messages) const override
    {
        return layOut(messages);
    }

private:
    Tokenizer m_tokenizer;
    std::vector<std::string> m_specialTexts;
};

} // namespace lumora::training
