// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/bytesink.h"
#include "store/records.h"

#include <QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace lumora {

// conversations.json: a compact JSON array of conversations, UTF-8, keys in the order of the records' fields.
// Identifiers are upper-case UUID texts, points in time are seconds since 2001. What is absent in a record has no key.

/// Gives the sink the bytes of the file, or returns them.
void encodeConversations(const std::vector<Conversation> &conversations, const ByteSink &sink);
QByteArray encodeConversations(const std::vector<Conversation> &conversations);

/// Keys may come in any order, a null counts as a missing key, unknown keys are passed over. All or nothing: no value
/// where any part of the bytes breaks the rules of the file.
/// found: is given each chat as soon as it is read, to change it as it likes.
using ChatFound = std::function<void(Conversation &)>;
std::optional<std::vector<Conversation>> decodeConversations(QByteArray bytes, const ChatFound &found = {});

// The array of a chat's messages in that file.
QByteArray encodeMessages(const std::vector<ChatMessage> &messages);
/// Throws JsonError for what encodeMessages() would not write.
std::vector<ChatMessage> decodeMessages(QByteArray bytes);

} // namespace lumora
