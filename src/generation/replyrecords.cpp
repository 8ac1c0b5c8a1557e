// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/structuredanswer.h"
#include "generation/toolevents.h"
#include "store/chatstore.h"
#include "store/replytext.h"

#include <utility>

namespace lumora {

namespace {

enum class Changed {
    no,
    yes,
};

} // namespace

template <typename Change>
void ChatStore::changeMessage(const QUuid &messageID, const QUuid &conversationID, Change change)
{
    Conversation *conversation = m_conversations.find(conversationID);
    if (!conversation)
        return;
    const std::optional<qsizetype> row = messageRow(*conversation, messageID);
    if (row && change(conversation->messages[size_t(*row)], *conversation) == Changed::yes)
        Q_EMIT messageChanged(conversationID, *row);
}

void ChatStore::applySnapshot(const QString &content, const QUuid &messageID, const QUuid &conversationID)
{
    changeMessage(messageID, conversationID, [&content](ChatMessage &message, Conversation &conversation) {
        message.text = cleanReplyText(content);
        conversation.updatedAt = TimePoint::now();
        return Changed::yes;
    });
}

void ChatStore::applyAnswer(const StructuredAnswer &answer, const QUuid &messageID, const QUuid &conversationID)
{
    changeMessage(messageID, conversationID, [&answer](ChatMessage &message, Conversation &) {
        message.card = AnswerCard{answer.title, answer.summary, answer.keyPoints, answer.nextSteps};
        return Changed::yes;
    });
}

void ChatStore::recordToolEvents(const Transcript &transcript, const QUuid &messageID, const QUuid &conversationID)
{
    changeMessage(messageID, conversationID, [&transcript](ChatMessage &message, Conversation &) {
        std::optional<QList<ToolEvent>> events = toolEvents(transcript);
        if (message.toolEvents == events)
            return Changed::no;
        message.toolEvents = std::move(events);
        return Changed::yes;
    });
}

void ChatStore::recordUsage(const Usage &usage, const QUuid &messageID, const QUuid &conversationID)
{
    changeMessage(messageID, conversationID, [&usage](ChatMessage &message, Conversation &) {
        message.inputTokens = usage.input.totalTokenCount;
        message.outputTokens = usage.output.totalTokenCount;
        return Changed::yes;
    });
}

void ChatStore::discardEmptyReply(const QUuid &messageID, const QUuid &conversationID)
{
    const Conversation *conversation = m_conversations.find(conversationID);
    if (!conversation)
        return;
    for (qsizetype row = qsizetype(conversation->messages.size()) - 1; row >= 0; --row) {
        const ChatMessage &message = conversation->messages[size_t(row)];
        if (message.id == messageID && message.text.isEmpty() && !message.card)
            removeMessage(conversationID, row);
    }
}

} // namespace lumora
