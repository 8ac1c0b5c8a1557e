// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QMap>
#include <QVariant>

namespace lumora::races {

/// The properties of an object as somebody knows them who looks only when told of a change, as a view does.
class PropertyMirror : public QObject
{
    Q_OBJECT

public:
    explicit PropertyMirror(const QObject &object);

    /// The name of a property that has changed without a word; empty where there is none.
    QString stale() const;

public Q_SLOTS:
    void update();

private:
    const QObject &m_object;
    QMap<int, QVariant> m_values; ///< by the property's index
};

/// The chats as somebody knows them who follows the store's signals.
class ChatMirror : public QObject
{
    Q_OBJECT

public:
    explicit ChatMirror(const ChatStore &store);

    /// What differs from the store; empty where nothing does.
    QString stale() const;

private:
    struct Chat
    {
        QUuid id;
        QString title;
        std::vector<ChatMessage> messages;
        bool operator==(const Chat &) const = default;
    };

    Chat chatAt(qsizetype row) const;
    const Conversation &stored(const QUuid &id) const;
    Chat &chat(const QUuid &id);

    const ChatStore &m_store;
    std::vector<Chat> m_chats;
};

} // namespace lumora::races
