// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/trainingvocabulary.h"

#include <algorithm>
#include <utility>

namespace lumora::training {

namespace {

using service::ChatMessage;

std::string_view roleName(ChatMessage::Role role)
{
    switch (role) {
    case ChatMessage::Role::system:
        return "system";
    case ChatMessage::Role::user:
        return "user";
    case ChatMessage::Role::assistant:
        break;
    }
    return "assistant";
}

} // namespace

const char *const chatTemplate =
    "{% for message in messages %}<|im_start|>{{ message.role }}\n{{ message.content }}<|im_end|>\n{% endfor %}"
    "{% if add_generation_prompt %}<|im_start|>assistant\n{% endif %}";

TrainingVocabulary::TrainingVocabulary(Tokenizer tokenizer)
    : m_tokenizer(std::move(tokenizer))
    , m_specialTexts({m_tokenizer.texts().at(Tokenizer::messageStart), m_tokenizer.texts().at(Tokenizer::messageEnd)})
{
}

std::vector<Token> TrainingVocabulary::tokenize(std::string_view text, service::SpecialTokens special) const
{
    if (special == service::SpecialTokens::asText)
        return m_tokenizer.encode(text);
    std::vector<Token> tokens;
    while (!text.empty()) {
        const std::size_t start = text.find(m_specialTexts[0]);
        const std::size_t end = text.find(m_specialTexts[1]);
        const std::size_t mark = std::min({start, end, text.size()});
        const std::vector<Token> part = m_tokenizer.encode(text.substr(0, mark));
        tokens.insert(tokens.end(), part.begin(), part.end());
        text.remove_prefix(mark);
        if (text.empty())
            break;
        tokens.push_back(start < end ? Tokenizer::messageStart : Tokenizer::messageEnd);
        text.remove_prefix(m_specialTexts[start < end ? 0 : 1].size());
    }
    return tokens;
}

std::string TrainingVocabulary::layOut(std::span<const ChatMessage> messages) const
{
    std::string text;
    for (const ChatMessage &message : messages) {
        text += m_specialTexts[0] + std::string(roleName(message.role)) + '\n';
        text += message.content + m_specialTexts[1] + '\n';
    }
    return text + m_specialTexts[0] + "assistant\n";
}

} // namespace lumora::training
