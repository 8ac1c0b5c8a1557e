// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace lumora {

/// The messages of the selected chat, oldest first. A change of one message is a change of one row, and names only the
/// roles that differ.
class MessageListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumora::ChatStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        isReplyRole = Qt::UserRole,
        textRole,
        cardRole, ///< an AnswerCard, empty where hasCard is false
        hasCardRole,
        toolEventsRole, ///< a list of ToolEvent, empty where the message has none
        tokenLineRole,  ///< empty unless both counts are known
        imagePathRole,  ///< absolute; empty where there is no image, or no image folder
        isGrowingRole,  ///< whether more of its text may be to come
    };

    explicit MessageListModel(QObject *parent = nullptr);

    ChatStore *store() const { return m_store; }
    void setStore(ChatStore *store);
    int count() const { return rowCount(); }

    /// Puts what a message says on the clipboard.
    Q_INVOKABLE void copy(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void storeChanged();
    void countChanged();
    /// The rows are going to be those of another chat.
    void conversationAboutToChange();
    /// The number of messages or the text of the last one has changed. Comes before countChanged, so that a view knows
    /// whether it had something to show.
    void endChanged();

private:
    struct End
    {
        size_t count = 0;
        QString lastText;
        bool operator==(const End &) const = default;
    };

    void connectStore();
    void reset();
    void replaceRows(const std::vector<ChatMessage> &rows);
    void append(const QUuid &conversationID);
    void change(const QUuid &conversationID, qsizetype row);
    void remove(const QUuid &conversationID, qsizetype row);
    void updateGrowing();

    /// The selected chat, where that is the one shown and the one named.
    const Conversation *shown(const QUuid &conversationID) const;
    QString imagePath(const ChatMessage &message) const;
    bool isGrowing(size_t row) const;
    End end() const;
    void announce(const End &before);

    QPointer<ChatStore> m_store;
    QUuid m_conversationID;
    std::vector<ChatMessage> m_rows; ///< what the views have been told
};

} // namespace lumora
