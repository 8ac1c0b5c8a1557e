// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace lumora {

/// The chats as the sidebar lists them, in the store's order.
class ConversationListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumora::ChatStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectedRowChanged)

public:
    enum Role {
        titleRole = Qt::UserRole,
        conversationIDRole,
    };

    explicit ConversationListModel(QObject *parent = nullptr);

    ChatStore *store() const { return m_store; }
    void setStore(ChatStore *store);

    /// -1 where the selected chat is none of the list.
    int selectedRow() const { return m_selectedRow; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void storeChanged();
    void selectedRowChanged();

private:
    struct Row
    {
        QUuid id;
        QString title;
    };

    void connectStore();
    void reset();
    void insert(qsizetype row);
    void remove(qsizetype row);
    void retitle(qsizetype row);
    void updateSelectedRow();

    QPointer<ChatStore> m_store;
    std::vector<Row> m_rows; ///< what the views have been told
    int m_selectedRow = -1;
};

} // namespace lumora
