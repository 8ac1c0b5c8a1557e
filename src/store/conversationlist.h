// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/records.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace lumora {

/// The chats in display order. Finding one by its identifier costs the same with ten chats as with thousands, as long
/// as the same one is asked for again.
class ConversationList
{
public:
    const std::vector<Conversation> &all() const { return m_conversations; }
    bool isEmpty() const { return m_conversations.empty(); }
    void reset(std::vector<Conversation> conversations);

    /// The row of the first chat with this identifier.
    std::optional<qsizetype> row(const QUuid &id) const;
    Conversation *find(const QUuid &id);
    const Conversation *find(const QUuid &id) const;

    void insertAtTop(Conversation conversation);
    void removeAt(qsizetype row);

private:
    std::vector<Conversation> m_conversations;
    mutable size_t m_lastFound = 0;
};

/// The row of the first message with this identifier, which is most often the last.
std::optional<qsizetype> messageRow(const Conversation &conversation, const QUuid &id);

} // namespace lumora
