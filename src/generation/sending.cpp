// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/generationrun.h"
#include "generation/generationtask.h"
#include "platform/text/textrules.h"
#include "store/chatstore.h"

#include <QFileInfo>

#include <ranges>

namespace lumora {

void ChatStore::send()
{
    if (!m_canSend || !m_selectedID)
        return;
    const QUuid conversationID = *m_selectedID;
    const QString typedText = trimmed(m_draft).toString();
    const std::optional<QString> pendingImage = m_pendingImageURL;
    setDraft(QString());
    setPendingImageURL(std::nullopt); // the file stays: the message names it
    setErrorMessage(QString());

    ChatMessage question{.role = ChatMessage::Role::user,
                         .text = typedText.isEmpty() ? QStringLiteral("Describe this image.") : typedText};
    if (pendingImage)
        question.imageFilename = QFileInfo(*pendingImage).fileName();
    appendMessage(std::move(question), conversationID);

    ChatMessage reply{.role = ChatMessage::Role::assistant};
    const QUuid replyID = reply.id;
    appendMessage(std::move(reply), conversationID);

    m_generationID = QUuid::createUuid();
    m_generationTask = std::make_shared<GenerationTask>();
    setGenerating(true);
    save();

    const GenerationRun run{
        .store = this,
        .conversationID = conversationID,
        .messageID = replyID,
        .typedText = typedText,
        .imageURL = latestImageURL(conversationID),
        .replyStyle = m_replyStyle,
        .generationID = *m_generationID,
        .task = m_generationTask,
    };
    QMetaObject::invokeMethod(
        this, [run] { generate(run); }, Qt::QueuedConnection);
}

std::optional<QString> ChatStore::latestImageURL(const QUuid &conversationID) const
{
    const Conversation *conversation = m_conversations.find(conversationID);
    if (!conversation)
        return std::nullopt;
    for (const ChatMessage &message : conversation->messages.all() | std::views::reverse) {
        if (!message.imageFilename)
            continue;
        if (std::optional<QString> url = imageURL(*message.imageFilename))
            return url;
    }
    return std::nullopt;
}

} // namespace lumora
