// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/storefixture.h"
#include "ui/windowdriver.h"

#include <QTest>

namespace lumora {

/// A window on a store and a model of its own for each test.
class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup()
    {
        m_driver.reset();
        m_store.reset();
        m_fixture.reset();
    }

protected:
    void start(const std::vector<Conversation> &conversations = {})
    {
        if (!conversations.empty())
            m_fixture->write(conversations);
        m_store = m_fixture->start();
        m_driver = std::make_unique<WindowDriver>(m_store.get());
    }
    void say(const QString &text)
    {
        m_driver->type(text);
        m_driver->press(Qt::Key_Return);
    }
    QQuickItem *button(const QString &name) const { return m_driver->find(QAccessible::Button, name); }
    QQuickItem *messageList() const { return m_driver->find(QAccessible::List, "Messages"); }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<WindowDriver> m_driver;
};

template <typename Test>
int runWindowTest(int argc, char *argv[])
{
    // No graphics card is asked for, so that what is tested is the same everywhere.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace lumora
