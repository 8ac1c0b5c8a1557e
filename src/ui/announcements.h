// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QObject>
#include <QPointer>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// Tells what happens in words, for those who do not see it: a reply that is complete, an error, a model that can be
/// used or no longer can.
class Announcements : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumora::ChatStore *store READ store WRITE setStore REQUIRED)

public:
    using QObject::QObject;

    ChatStore *store() const { return m_store; }
    /// To be set once.
    void setStore(ChatStore *store);

Q_SIGNALS:
    /// text: plain, never empty.
    void announced(const QString &text);

private:
    void tell(const QString &text);
    void tellReply();
    void tellAvailability();

    QPointer<ChatStore> m_store;
    QUuid m_replyID;               ///< of the reply that is, or was last, generated
    QString m_availabilityMessage; ///< as it was told last
};

} // namespace lumora
