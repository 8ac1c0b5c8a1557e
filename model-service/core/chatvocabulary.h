// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::service {

using Token = std::int32_t;

struct ChatMessage
{
    enum class Role {
        system,
        user,
        assistant,
    };

    Role role = Role::user;
    std::string content;

    bool operator==(const ChatMessage &) const = default;
};

enum class SpecialTokens {
    asText,     ///< a mark such as <|im_end|> is read as the characters that it is written with
    recognised, ///< a mark is read as its one token
};

/// How a model reads a chat: its tokens and its layout of messages.
class ChatVocabulary
{
public:
    ChatVocabulary() = default;
    ChatVocabulary(const ChatVocabulary &) = delete;
    ChatVocabulary &operator=(const ChatVocabulary &) = delete;
    virtual ~ChatVocabulary() = default;

    /// The tokens of the text alone, nothing put before or after it.
    virtual std::vector<Token> tokenize(std::string_view text, SpecialTokens special) const = 0;

    /// The token that the model wants before everything else, if it wants one.
    virtual std::optional<Token> openingToken() const = 0;

    /// How the special tokens are written, for texts that hold the same characters by chance or by intent.
    virtual const std::vector<std::string> &specialTexts() const = 0;

    /// The messages in the layout that the model was trained on, up to where its own turn begins. Nothing where the
    /// file names no layout, or one that is not known.
    virtual std::optional<std::string> applyTemplate(std::span<const ChatMessage> messages) const = 0;
};

} // namespace lumora::service
