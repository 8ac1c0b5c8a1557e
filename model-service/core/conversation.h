// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/chatvocabulary.h"
#include "core/sequence.h"
#include "wire/messages.h"

#include <bitset>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::service {

/// Lays out what the model reads: the opening of a conversation, and each tool's output after a call.
class Conversation
{
public:
    explicit Conversation(const ChatVocabulary &vocabulary);

    /// Instructions and tools as the system's message, then the prompt and its images as the user's, up to where the
    /// model's turn begins. images: as the engine has prepared them, one for each of the request's. A schema is not
    /// laid out: it binds the answer, and what the model is to know of it stands in the prompt.
    Sequence opening(const wire::Respond &request, std::span<const PreparedImage> images) const;

    /// What stands between a call, which ended the model's turn, and the model's next turn. output: valid UTF-8.
    std::vector<Token> toolTurn(std::string_view tool, std::string_view output) const;

    /// The model's file names no known layout: the plain one is used, in which the model may go on to speak for the
    /// user.
    bool isPlain() const { return m_plain; }

    /// The model's turn begins inside a thought, because its layout opens one.
    bool opensThought() const { return m_opensThought; }

private:
    std::string layOut(const std::vector<ChatMessage> &messages) const;
    std::string guarded(std::string_view text) const;
    bool beginsSpecialText(std::string_view text) const;
    std::vector<Token> tokens(std::string_view laidOut) const;

    const ChatVocabulary &m_vocabulary;
    std::bitset<256> m_specialBeginnings; // the first bytes of the special tokens' texts
    bool m_plain = false;
    bool m_opensThought = false;
};

/// The system's message.
std::string systemText(const wire::Respond &request);

/// A layout that any model can follow: the system's text, then "User:" and "Assistant:" before each turn.
std::string plainLayout(const std::vector<ChatMessage> &messages);

} // namespace lumora::service
