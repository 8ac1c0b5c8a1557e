// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

#include "store/chatstore.h"
#include "ui/accessiblebutton.h"

#include <QGuiApplication>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>

Q_IMPORT_QML_PLUGIN(org_lumora_uiPlugin)

namespace lumora {

using namespace std::chrono_literals;

MainWindow::MainWindow(const std::optional<QString> &stateFile)
{
    if (stateFile)
        m_memory.emplace(*stateFile);
    AccessibleButton::install();
    m_engine.setNetworkAccessManagerFactory(&m_network);
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    if (m_memory)
        m_engine.setInitialProperties(m_memory->remembered());
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/org/lumora/ui/Main.qml")));
    if (m_memory && window())
        m_memory->watch(window());
}

bool MainWindow::setStore(ChatStore *store) const
{
    window()->setProperty("store", QVariant::fromValue(store));
    return window()->property("isFilled").toBool();
}

void MainWindow::whenShown(const std::function<void()> &action) const
{
    constexpr auto patience = 500ms;
    auto *wait = new QTimer(window()); // which is what ends the wait, in any case
    wait->setSingleShot(true);
    wait->start(patience);
    QObject::connect(
        window(), &QQuickWindow::frameSwapped, wait, [wait] { wait->start(0); }, Qt::SingleShotConnection);
    QObject::connect(
        wait, &QTimer::timeout, window(),
        [wait, action] {
            wait->deleteLater();
            action();
        },
        Qt::SingleShotConnection);
}

QQuickWindow *MainWindow::window() const
{
    const QObjectList roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

void MainWindow::raise(const QString &token) const
{
    QQuickWindow *shown = window();
    if (!shown)
        return;
    // Where the toolkit looks for it when it asks for the focus.
    if (!token.isEmpty() && QGuiApplication::platformName().startsWith(QStringLiteral("wayland")))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    shown->setWindowStates(shown->windowStates() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
    shown->requestActivate();
}

void MainWindow::startNewChat() const
{
    QMetaObject::invokeMethod(window(), "startNewChat");
}

} // namespace lumora
