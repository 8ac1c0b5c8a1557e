// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/generationtask.h"
#include "platform/text/graphemes.h"
#include "store/chatstore.h"

#include <algorithm>

namespace lumora {

namespace {

constexpr qsizetype titleLength = 48; // characters

} // namespace

void ChatStore::newConversation()
{
    stopGenerating();
    const auto empty = std::ranges::find_if(conversations(), &Messages::empty, &Conversation::messages);
    if (empty != conversations().end()) {
        startComposing(empty->id);
        return;
    }
    Conversation conversation;
    const QUuid id = conversation.id;
    m_conversations.insertAtTop(std::move(conversation));
    Q_EMIT conversationInserted(0);
    startComposing(id);
    save();
}

void ChatStore::selectConversation(QUuid id)
{
    if (m_selectedID == id)
        return;
    stopGenerating();
    startComposing(id);
}

void ChatStore::startComposing(const QUuid &conversationID)
{
    setSelectedID(conversationID);
    setDraft(QString());
    setContextTokens(0);
    removePendingImage();
    setErrorMessage(QString());
}

void ChatStore::deleteConversation(QUuid id)
{
    if (m_selectedID == id)
        stopGenerating();
    for (qsizetype row = qsizetype(conversations().size()) - 1; row >= 0; --row) {
        if (conversations()[size_t(row)].id != id)
            continue;
        m_conversations.removeAt(row);
        Q_EMIT conversationRemoved(row);
    }
    if (m_conversations.isEmpty())
        newConversation();
    else if (m_selectedID == id)
        setSelectedID(conversations().front().id);
    save();
}

void ChatStore::appendMessage(ChatMessage message, const QUuid &conversationID)
{
    const std::optional<qsizetype> row = m_conversations.row(conversationID);
    if (!row)
        return;
    Conversation &conversation = *m_conversations.find(conversationID);
    const bool givesTitle = message.role == ChatMessage::Role::user && conversation.title == QLatin1String("New Chat");
    if (givesTitle)
        conversation.title = firstCharacters(message.text, titleLength).toString();
    conversation.messages.append(std::move(message));
    conversation.updatedAt = TimePoint::now();

    Q_EMIT messageAppended(conversationID);
    if (givesTitle) {
        Q_EMIT conversationTitleChanged(*row);
        Q_EMIT windowTitleChanged();
    }
}

void ChatStore::removeMessage(const QUuid &conversationID, qsizetype row)
{
    std::vector<ChatMessage> &messages = m_conversations.find(conversationID)->messages.all();
    messages.erase(messages.begin() + row);
    Q_EMIT messageRemoved(conversationID, row);
}

void ChatStore::stopGenerating()
{
    if (m_generationTask)
        m_generationTask->cancel();
    m_generationTask = nullptr;
    m_generationID = std::nullopt;
    const Conversation *selected = selectedConversation();
    if (selected && !selected->messages.empty() && selected->messages.back().isEmptyReply())
        removeMessage(selected->id, qsizetype(selected->messages.size()) - 1);
    setGenerating(false);
    save();
}

} // namespace lumora
