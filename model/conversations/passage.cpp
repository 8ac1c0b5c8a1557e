// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/passage.h"

#include "core/conversation.h"

#include <algorithm>
#include <span>

namespace lumora::training {

namespace {

void append(Passage &passage, const std::vector<Token> &tokens, bool supervised)
{
    passage.tokens.insert(passage.tokens.end(), tokens.begin(), tokens.end());
    passage.supervised.resize(passage.tokens.size(), supervised ? 1 : 0);
}

/// What stands between two turns of the model: the mark at the end of the first, which is the model's, and the rest.
void appendFollowing(Passage &passage, const std::vector<Token> &following)
{
    append(passage, following, false);
    passage.supervised[passage.tokens.size() - following.size()] = 1;
}

/// Between two turns of the model that no tool's output divides, of which only drills are made.
std::vector<Token> nextTurn(const TrainingVocabulary &vocabulary, std::span<const service::ChatMessage> messages)
{
    std::vector<Token> tokens{Tokenizer::messageEnd};
    const std::vector<Token> opening =
        vocabulary.tokenize("\n" + vocabulary.layOut(messages), service::SpecialTokens::recognised);
    tokens.insert(tokens.end(), opening.begin(), opening.end());
    return tokens;
}

} // namespace

Passage makePassage(const Example &example, const TrainingVocabulary &vocabulary)
{
    const service::Conversation conversation(vocabulary);
    Passage passage{example.task, {}, {}, 0};
    append(passage, conversation.opening(example.request, {}).tokens, false);
    if (!service::systemText(example.request).empty()) {
        const auto end = std::ranges::find(passage.tokens, Tokenizer::messageEnd);
        passage.systemSize = static_cast<std::size_t>(end - passage.tokens.begin()) + 1;
    }
    const Turn *before = nullptr;
    for (const Turn &turn : example.turns) {
        if (turn.role == Turn::Role::tool) {
            appendFollowing(passage, conversation.toolTurn(turn.tool, turn.text));
        } else if (turn.role == Turn::Role::user) {
            const service::ChatMessage message{service::ChatMessage::Role::user, turn.text};
            appendFollowing(passage, nextTurn(vocabulary, std::span(&message, 1)));
        } else {
            if (before != nullptr && before->role == Turn::Role::model)
                appendFollowing(passage, nextTurn(vocabulary, {}));
            append(passage, vocabulary.tokenize(turn.text, service::SpecialTokens::asText), true);
        }
        before = &turn;
    }
    append(passage, {Tokenizer::messageEnd}, true);
    return passage;
}

} // namespace lumora::training
