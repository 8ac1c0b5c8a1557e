// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/conversationlistmodel.h"

#include <algorithm>

namespace lumora {

ConversationListModel::ConversationListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void ConversationListModel::setStore(ChatStore *store)
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

void ConversationListModel::connectStore()
{
    connect(m_store, &QObject::destroyed, this, &ConversationListModel::reset);
    connect(m_store, &ChatStore::conversationInserted, this, &ConversationListModel::insert);
    connect(m_store, &ChatStore::conversationRemoved, this, &ConversationListModel::remove);
    connect(m_store, &ChatStore::conversationTitleChanged, this, &ConversationListModel::retitle);
    connect(m_store, &ChatStore::selectedIDChanged, this, &ConversationListModel::updateSelectedRow);
}

int ConversationListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ConversationListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows[size_t(index.row())];
    switch (role) {
    case titleRole:
    case Qt::DisplayRole:
        return row.title;
    case conversationIDRole:
        return row.id;
    default:
        return {};
    }
}

QHash<int, QByteArray> ConversationListModel::roleNames() const
{
    return {{titleRole, "title"}, {conversationIDRole, "conversationID"}};
}

void ConversationListModel::reset()
{
    beginResetModel();
    m_rows.clear();
    if (m_store) {
        for (const Conversation &conversation : m_store->conversations())
            m_rows.push_back({conversation.id, conversation.title});
    }
    endResetModel();
    updateSelectedRow();
}

void ConversationListModel::insert(qsizetype row)
{
    const Conversation &conversation = m_store->conversations().at(size_t(row));
    beginInsertRows({}, int(row), int(row));
    m_rows.insert(m_rows.begin() + row, {conversation.id, conversation.title});
    endInsertRows();
    updateSelectedRow();
}

void ConversationListModel::remove(qsizetype row)
{
    beginRemoveRows({}, int(row), int(row));
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
    updateSelectedRow();
}

void ConversationListModel::retitle(qsizetype row)
{
    m_rows.at(size_t(row)).title = m_store->conversations().at(size_t(row)).title;
    Q_EMIT dataChanged(index(int(row)), index(int(row)), {titleRole, Qt::DisplayRole});
}

void ConversationListModel::updateSelectedRow()
{
    const auto selected = m_store ? m_store->selectedID() : std::nullopt;
    const auto found =
        std::find_if(m_rows.cbegin(), m_rows.cend(), [&selected](const Row &row) { return row.id == selected; });
    const int row = found == m_rows.cend() ? -1 : int(found - m_rows.cbegin());
    if (row == m_selectedRow)
        return;
    m_selectedRow = row;
    Q_EMIT selectedRowChanged();
}

} // namespace lumora
