// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatmessage.h"

#include <QByteArray>

#include <initializer_list>
#include <vector>

namespace lumora {

/// The messages of a chat, oldest first. Most chats of a long history are never looked at: their messages stay packed,
/// the bytes that the history file has for them, compressed, which take a sixth of the memory. Whoever asks for one
/// unpacks them all. One thread at a time, for reading too.
class Messages
{
public:
    Messages() = default;
    Messages(std::vector<ChatMessage> messages);
    Messages(std::initializer_list<ChatMessage> messages);

    void pack();
    /// What the history file has for them, where they are packed; null otherwise.
    QByteArray packedJson() const;

    const std::vector<ChatMessage> &all() const;
    std::vector<ChatMessage> &all();

    bool empty() const { return m_messages.empty() && m_packed.isNull(); }
    size_t size() const { return all().size(); }
    auto begin() const { return all().begin(); }
    auto end() const { return all().end(); }
    const ChatMessage &front() const { return all().front(); }
    const ChatMessage &back() const { return all().back(); }
    ChatMessage &back() { return all().back(); }
    const ChatMessage &at(size_t row) const { return all().at(row); }
    const ChatMessage &operator[](size_t row) const { return all()[row]; }
    ChatMessage &operator[](size_t row) { return all()[row]; }
    void append(ChatMessage message) { all().push_back(std::move(message)); }

    bool operator==(const Messages &other) const { return all() == other.all(); }

private:
    void unpack() const;

    mutable std::vector<ChatMessage> m_messages; ///< empty while they are packed
    mutable QByteArray m_packed;
};

} // namespace lumora
