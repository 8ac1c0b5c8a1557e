// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/announcements.h"

#include "ui/spokentext.h"

#include <QAccessible>

namespace lumora {

void Announcements::setStore(ChatStore *store)
{
    m_store = store;
    m_availabilityMessage = store->availabilityMessage();
    connect(store, &ChatStore::isGeneratingChanged, this, &Announcements::tellReply);
    connect(store, &ChatStore::modelAvailabilityChanged, this, &Announcements::tellAvailability);
    connect(store, &ChatStore::errorMessageChanged, this, [this] { tell(m_store->errorMessage()); });
    connect(store->library(), &DocumentLibrary::errorMessageChanged, this,
            [this] { tell(m_store->library()->errorMessage()); });
}

void Announcements::tell(const QString &text)
{
    if (!text.isEmpty())
        Q_EMIT announced(text);
}

void Announcements::tellReply()
{
    const Conversation *chat = m_store->selectedConversation();
    if (!chat || chat->messages.empty())
        return;
    const ChatMessage &last = chat->messages.back();
    if (m_store->isGenerating())
        m_replyID = last.id;
    // Only a reply that came to its own end has been counted; who stops one knows.
    else if (last.id == m_replyID && last.outputTokens && QAccessible::isActive())
        tell(tr("Reply: %1").arg(spokenText(last)));
}

void Announcements::tellAvailability()
{
    const QString message = m_store->availabilityMessage();
    if (message == m_availabilityMessage)
        return;
    m_availabilityMessage = message;
    tell(message.isEmpty() ? tr("On-device model ready") : message);
}

} // namespace lumora
