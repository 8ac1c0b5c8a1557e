// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/mirrors.h"

#include "races/comparison.h"

#include <QMetaMethod>
#include <QMetaProperty>

#include <algorithm>

namespace lumora::races {

PropertyMirror::PropertyMirror(const QObject &object)
    : m_object(object)
{
    const QMetaObject &type = *object.metaObject();
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("update()"));
    for (int index = type.propertyOffset(); index < type.propertyCount(); ++index) {
        if (!type.property(index).hasNotifySignal())
            continue;
        m_values[index] = type.property(index).read(&object);
        connect(&object, type.property(index).notifySignal(), this, slot, Qt::UniqueConnection);
    }
}

void PropertyMirror::update()
{
    const int signal = senderSignalIndex();
    for (auto value = m_values.begin(); value != m_values.end(); ++value) {
        const QMetaProperty property = m_object.metaObject()->property(value.key());
        if (property.notifySignalIndex() == signal)
            *value = property.read(&m_object);
    }
}

QString PropertyMirror::stale() const
{
    for (const auto &[index, value] : m_values.asKeyValueRange()) {
        const QMetaProperty property = m_object.metaObject()->property(index);
        if (property.read(&m_object) != value)
            return QString("the property %1 changed without a word").arg(property.name());
    }
    return {};
}

ChatMirror::ChatMirror(const ChatStore &store)
    : m_store(store)
{
    for (size_t row = 0; row < store.conversations().size(); ++row)
        m_chats.push_back(chatAt(qsizetype(row)));
    connect(&store, &ChatStore::conversationInserted, this,
            [this](qsizetype row) { m_chats.insert(m_chats.begin() + row, chatAt(row)); });
    connect(&store, &ChatStore::conversationRemoved, this,
            [this](qsizetype row) { m_chats.erase(m_chats.begin() + row); });
    connect(&store, &ChatStore::conversationTitleChanged, this,
            [this](qsizetype row) { m_chats[size_t(row)].title = chatAt(row).title; });
    connect(&store, &ChatStore::messageAppended, this,
            [this](const QUuid &id) { chat(id).messages.push_back(stored(id).messages.back()); });
    connect(&store, &ChatStore::messageChanged, this, [this](const QUuid &id, qsizetype row) {
        chat(id).messages[size_t(row)] = stored(id).messages[size_t(row)];
    });
    connect(&store, &ChatStore::messageRemoved, this,
            [this](const QUuid &id, qsizetype row) { chat(id).messages.erase(chat(id).messages.begin() + row); });
}

ChatMirror::Chat ChatMirror::chatAt(qsizetype row) const
{
    const Conversation &conversation = m_store.conversations()[size_t(row)];
    return {conversation.id, conversation.title, messagesOf(conversation)};
}

const Conversation &ChatMirror::stored(const QUuid &id) const
{
    return *std::ranges::find(m_store.conversations(), id, &Conversation::id);
}

ChatMirror::Chat &ChatMirror::chat(const QUuid &id)
{
    return *std::ranges::find(m_chats, id, &Chat::id);
}

QString ChatMirror::stale() const
{
    if (m_chats.size() != m_store.conversations().size())
        return "a chat came or went without a word";
    for (size_t row = 0; row < m_chats.size(); ++row) {
        if (m_chats[row] != chatAt(qsizetype(row)))
            return "a chat changed without a word";
    }
    return {};
}

} // namespace lumora::races
