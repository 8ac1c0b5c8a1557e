// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace lumora {

/// How the desktop starts this program and reaches its window: the interface org.freedesktop.Application under the
/// program's own name on the session bus (Desktop Entry Specification, "D-Bus Activation"). Without a bus, or where
/// another program has the name, nobody asks. Used on the main thread.
class DesktopActivation : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// name: that of the desktop file, without its ending.
    explicit DesktopActivation(const QString &name, QObject *parent = nullptr);
    ~DesktopActivation() override;

public Q_SLOTS:
    // Called over the bus. Whoever asks says in the platform's data what lets the window come to the front.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameters,
                                     const QVariantMap &platformData);

Q_SIGNALS:
    /// token: for MainWindow::raise; may be empty.
    void raiseRequested(const QString &token);
    void newChatRequested();

private:
    QDBusConnection m_bus;
    QString m_name;
};

} // namespace lumora
