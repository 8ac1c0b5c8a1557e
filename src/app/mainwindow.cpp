// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

#include "store/chatstore.h"
#include "ui/accessiblebutton.h"

#include <QQmlExtensionPlugin>
#include <QQuickWindow>

Q_IMPORT_QML_PLUGIN(org_lumora_uiPlugin)

namespace lumora {

MainWindow::MainWindow(ChatStore *store, const std::optional<QString> &stateFile)
{
    if (stateFile)
        m_memory.emplace(*stateFile);
    QVariantMap properties = m_memory ? m_memory->remembered() : QVariantMap();
    properties.insert(QStringLiteral("store"), QVariant::fromValue(store));
    AccessibleButton::install();
    m_engine.setNetworkAccessManagerFactory(&m_network);
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_engine.setInitialProperties(properties);
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/org/lumora/ui/Main.qml")));
    if (m_memory && window())
        m_memory->watch(window());
}

QQuickWindow *MainWindow::window() const
{
    const QObjectList roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

void MainWindow::raise() const
{
    QQuickWindow *shown = window();
    if (!shown)
        return;
    shown->setWindowStates(shown->windowStates() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
    shown->requestActivate();
}

} // namespace lumora
