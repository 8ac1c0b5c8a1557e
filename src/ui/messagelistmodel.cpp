// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/messagelistmodel.h"

#include "ui/spokentext.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace lumora {

namespace {

QString tokenLine(const ChatMessage &message)
{
    if (!message.inputTokens || !message.outputTokens)
        return {};
    return MessageListModel::tr("%1 input · %2 output tokens")
        .arg(QString::number(*message.inputTokens), QString::number(*message.outputTokens));
}

QList<int> differingRoles(const ChatMessage &before, const ChatMessage &after)
{
    QList<int> roles;
    if (before.role != after.role)
        roles << MessageListModel::isReplyRole;
    if (before.text != after.text)
        roles << MessageListModel::textRole << Qt::DisplayRole;
    if (before.card != after.card)
        roles << MessageListModel::cardRole << MessageListModel::hasCardRole;
    if (before.toolEvents != after.toolEvents)
        roles << MessageListModel::toolEventsRole;
    if (before.inputTokens != after.inputTokens || before.outputTokens != after.outputTokens)
        roles << MessageListModel::tokenLineRole;
    if (before.imageFilename != after.imageFilename)
        roles << MessageListModel::imagePathRole;
    return roles;
}

} // namespace

MessageListModel::MessageListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void MessageListModel::setStore(ChatStore *store)
{
    if (m_store == store)
        return;
    if (m_store)
        m_store->disconnect(this);
    m_store = store;
    if (m_store)
        connectStore();
    reset();
    Q_EMIT storeChanged();
}

void MessageListModel::connectStore()
{
    connect(m_store, &QObject::destroyed, this, &MessageListModel::reset);
    connect(m_store, &ChatStore::selectedIDChanged, this, &MessageListModel::reset);
    connect(m_store, &ChatStore::messageAppended, this, &MessageListModel::append);
    connect(m_store, &ChatStore::messageChanged, this, &MessageListModel::change);
    connect(m_store, &ChatStore::messageRemoved, this, &MessageListModel::remove);
    connect(m_store, &ChatStore::isGeneratingChanged, this, &MessageListModel::updateGrowing);
}

int MessageListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant MessageListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ChatMessage &message = m_rows[size_t(index.row())];
    switch (role) {
    case isReplyRole:
        return message.role == ChatMessage::Role::assistant;
    case textRole:
    case Qt::DisplayRole:
        return message.text;
    case cardRole:
        return QVariant::fromValue(message.card.value_or(AnswerCard()));
    case hasCardRole:
        return message.card.has_value();
    case toolEventsRole:
        return QVariant::fromValue(message.toolEvents.value_or(QList<ToolEvent>()));
    case tokenLineRole:
        return tokenLine(message);
    case imagePathRole:
        return imagePath(message);
    case isGrowingRole:
        return isGrowing(size_t(index.row()));
    default:
        return {};
    }
}

QHash<int, QByteArray> MessageListModel::roleNames() const
{
    return {{isReplyRole, "isReply"},
            {textRole, "text"},
            {cardRole, "card"},
            {hasCardRole, "hasCard"},
            {toolEventsRole, "toolEvents"},
            {tokenLineRole, "tokenLine"},
            {imagePathRole, "imagePath"},
            {isGrowingRole, "isGrowing"}};
}

void MessageListModel::copy(int row) const
{
    QGuiApplication::clipboard()->setText(spokenText(m_rows.at(size_t(row))));
}

void MessageListModel::reset()
{
    const End before = end();
    const Conversation *selected = m_store ? m_store->selectedConversation() : nullptr;
    Q_EMIT conversationAboutToChange();
    m_conversationID = selected ? selected->id : QUuid();
    replaceRows(selected ? selected->messages.all() : std::vector<ChatMessage>());
    announce(before);
}

/// Changes the rows that stay in number, rather than reset them all, so that the views go on with what they have made.
void MessageListModel::replaceRows(const std::vector<ChatMessage> &rows)
{
    const auto common = qsizetype(std::min(rows.size(), m_rows.size()));
    if (m_rows.size() > size_t(common)) {
        beginRemoveRows({}, int(common), int(m_rows.size()) - 1);
        m_rows.resize(size_t(common));
        endRemoveRows();
    }
    std::copy_n(rows.begin(), common, m_rows.begin());
    if (common > 0)
        Q_EMIT dataChanged(index(0), index(int(common) - 1));
    if (rows.size() > size_t(common)) {
        beginInsertRows({}, int(common), int(rows.size()) - 1);
        m_rows.insert(m_rows.end(), rows.begin() + common, rows.end());
        endInsertRows();
    }
}

void MessageListModel::append(const QUuid &conversationID)
{
    const Conversation *conversation = shown(conversationID);
    if (!conversation || conversation->messages.size() <= m_rows.size())
        return;
    const End before = end();
    const size_t row = m_rows.size();
    beginInsertRows({}, int(row), int(row));
    m_rows.push_back(conversation->messages[row]);
    endInsertRows();
    announce(before);
}

void MessageListModel::change(const QUuid &conversationID, qsizetype row)
{
    const Conversation *conversation = shown(conversationID);
    if (!conversation)
        return;
    const ChatMessage &message = conversation->messages.at(size_t(row));
    const QList<int> roles = differingRoles(m_rows.at(size_t(row)), message);
    if (roles.isEmpty())
        return;
    const End before = end();
    m_rows[size_t(row)] = message;
    Q_EMIT dataChanged(index(int(row)), index(int(row)), roles);
    announce(before);
}

void MessageListModel::remove(const QUuid &conversationID, qsizetype row)
{
    if (!shown(conversationID))
        return;
    const End before = end();
    beginRemoveRows({}, int(row), int(row));
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
    announce(before);
}

void MessageListModel::updateGrowing()
{
    const QModelIndex last = index(int(m_rows.size()) - 1);
    if (last.isValid())
        Q_EMIT dataChanged(last, last, {isGrowingRole});
}

const Conversation *MessageListModel::shown(const QUuid &conversationID) const
{
    return conversationID == m_conversationID ? m_store->selectedConversation() : nullptr;
}

QString MessageListModel::imagePath(const ChatMessage &message) const
{
    if (!m_store || !message.imageFilename)
        return {};
    return m_store->imageURL(*message.imageFilename).value_or(QString());
}

bool MessageListModel::isGrowing(size_t row) const
{
    return m_store && m_store->isGenerating() && row + 1 == m_rows.size() &&
           m_rows[row].role == ChatMessage::Role::assistant;
}

MessageListModel::End MessageListModel::end() const
{
    return {m_rows.size(), m_rows.empty() ? QString() : m_rows.back().text};
}

void MessageListModel::announce(const End &before)
{
    const End after = end();
    if (after != before)
        Q_EMIT endChanged();
    if (after.count != before.count)
        Q_EMIT countChanged();
}

} // namespace lumora
