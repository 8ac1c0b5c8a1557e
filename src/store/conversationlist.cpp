// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/conversationlist.h"

#include <algorithm>

namespace lumora {

void ConversationList::reset(std::vector<Conversation> conversations)
{
    m_conversations = std::move(conversations);
    m_lastFound = 0;
}

std::optional<qsizetype> ConversationList::row(const QUuid &id) const
{
    if (m_lastFound < m_conversations.size() && m_conversations[m_lastFound].id == id)
        return qsizetype(m_lastFound);
    const auto found = std::ranges::find(m_conversations, id, &Conversation::id);
    if (found == m_conversations.end())
        return std::nullopt;
    m_lastFound = size_t(found - m_conversations.begin());
    return qsizetype(m_lastFound);
}

Conversation *ConversationList::find(const QUuid &id)
{
    const std::optional<qsizetype> found = row(id);
    return found ? &m_conversations[size_t(*found)] : nullptr;
}

const Conversation *ConversationList::find(const QUuid &id) const
{
    const std::optional<qsizetype> found = row(id);
    return found ? &m_conversations[size_t(*found)] : nullptr;
}

void ConversationList::insertAtTop(Conversation conversation)
{
    m_conversations.insert(m_conversations.begin(), std::move(conversation));
    m_lastFound = 0;
}

void ConversationList::removeAt(qsizetype row)
{
    m_conversations.erase(m_conversations.begin() + row);
    m_lastFound = 0;
}

std::optional<qsizetype> messageRow(const Conversation &conversation, const QUuid &id)
{
    const std::vector<ChatMessage> &messages = conversation.messages.all();
    if (!messages.empty() && messages.back().id == id)
        return qsizetype(messages.size()) - 1;
    const auto found = std::ranges::find(messages, id, &ChatMessage::id);
    return found == messages.end() ? std::nullopt : std::optional(qsizetype(found - messages.begin()));
}

} // namespace lumora
