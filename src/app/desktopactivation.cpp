// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/desktopactivation.h"

namespace lumora {

namespace {

const QString connectionName = QStringLiteral("desktop activation");
const QString newChat = QStringLiteral("new-chat"); // as the desktop file names it

QString objectPath(QString name)
{
    return u'/' + name.replace(u'.', u'/').replace(u'-', u'_');
}

} // namespace

DesktopActivation::DesktopActivation(const QString &name, QObject *parent)
    : QObject(parent)
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName))
    , m_name(name)
{
    // The object first: who is waiting for the name asks as soon as it is there.
    if (m_bus.isConnected() && m_bus.registerObject(objectPath(name), this, QDBusConnection::ExportScriptableSlots))
        m_bus.registerService(name);
}

DesktopActivation::~DesktopActivation()
{
    m_bus.unregisterService(m_name);
    QDBusConnection::disconnectFromBus(connectionName);
}

void DesktopActivation::Activate(const QVariantMap &platformData)
{
    Q_EMIT raiseRequested(platformData.value(QStringLiteral("activation-token")).toString());
}

void DesktopActivation::Open(const QStringList & /*uris*/, const QVariantMap &platformData)
{
    Activate(platformData); // the desktop file says that no files are opened
}

void DesktopActivation::ActivateAction(const QString &name, const QVariantList & /*parameters*/,
                                       const QVariantMap &platformData)
{
    if (name == newChat)
        Q_EMIT newChatRequested();
    Activate(platformData);
}

} // namespace lumora
