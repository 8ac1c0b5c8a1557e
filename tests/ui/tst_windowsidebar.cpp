// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/windowtest.h"

using namespace lumora;

class WindowSidebarTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void newChatByShortcutAndButton()
    {
        start({conversation("Old", 1, {userMessage("a")})});

        m_driver->press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(m_store->conversations().size(), size_t(2));
        QVERIFY(m_store->selectedConversation()->messages.empty());
        m_driver->type("typed at once");
        QCOMPARE(m_store->draft(), "typed at once");

        m_driver->click(chatRow("Old"));
        m_driver->click(button("New chat"));
        QCOMPARE(m_store->conversations().size(), size_t(2));
        QVERIFY(m_store->selectedConversation()->messages.empty());
    }

    void selectsAChat_data()
    {
        QTest::addColumn<bool>("byKeyboard");

        QTest::newRow("mouse") << false;
        QTest::newRow("keyboard") << true;
    }

    void selectsAChat()
    {
        QFETCH(bool, byKeyboard);
        start({conversation("First", 3, {userMessage("a")}), conversation("Second", 2, {userMessage("b")}),
               conversation("Third", 1, {userMessage("c")})});

        if (byKeyboard) {
            m_driver->find(QAccessible::List, "Chats")->forceActiveFocus(Qt::TabFocusReason);
            m_driver->press(Qt::Key_Down);
            m_driver->press(Qt::Key_Down);
            QCOMPARE(m_store->selectedConversation()->title, "First");
            m_driver->press(Qt::Key_Return);
        } else {
            m_driver->click(chatRow("Third"));
        }

        QCOMPARE(m_store->selectedConversation()->title, "Third");
        QVERIFY(m_driver->showsText("c"));
        QVERIFY(!m_driver->showsText("a"));
    }

    void deletesAChatThroughItsMenu_data() { selectsAChat_data(); }

    void deletesAChatThroughItsMenu()
    {
        QFETCH(bool, byKeyboard);
        start({conversation("First", 3, {userMessage("a")}), conversation("Second", 2, {userMessage("b")})});

        if (byKeyboard) {
            m_driver->find(QAccessible::List, "Chats")->forceActiveFocus(Qt::TabFocusReason);
            m_driver->press(Qt::Key_Down);
            m_driver->press(Qt::Key_F10, Qt::ShiftModifier);
            QTRY_VERIFY(m_driver->shows(QAccessible::MenuItem, "Delete Chat"));
            m_driver->press(Qt::Key_Return);
        } else {
            m_driver->click(chatRow("Second"), Qt::RightButton);
            QTRY_VERIFY(m_driver->shows(QAccessible::MenuItem, "Delete Chat"));
            m_driver->click(m_driver->find(QAccessible::MenuItem, "Delete Chat"));
        }

        QTRY_COMPARE(titles(m_store->conversations()), QStringList{"First"});
        QTRY_VERIFY(!chatRow("Second"));
        QVERIFY(chatRow("First"));
    }

    void emptyStateGivesWayToTheChat()
    {
        const QString explanation = "Explore Apple\u2019s on-device model";
        start();
        QVERIFY(m_driver->showsText(explanation));
        QVERIFY(!messageList());
        QCOMPARE(m_driver->window()->title(), "New Chat");

        say("What is this?");
        QVERIFY(!m_driver->showsText(explanation));
        QVERIFY(messageList());
        QCOMPARE(m_driver->window()->title(), "What is this?");

        m_store->selectConversation(QUuid::createUuid());
        QVERIFY(m_driver->showsText(explanation));
        QCOMPARE(m_driver->window()->title(), "Lumora");
    }

    void bannerTellsTheAvailability_data()
    {
        using Reason = Availability::UnavailableReason;
        QTest::addColumn<std::optional<Reason>>("reason");
        QTest::addColumn<QString>("footer");

        const QString unavailable = "Model unavailable";
        QTest::newRow("available") << std::optional<Reason>() << "On-device model ready";
        QTest::newRow("not ready") << std::optional(Reason::modelNotReady) << unavailable;
        QTest::newRow("turned off") << std::optional(Reason::appleIntelligenceNotEnabled) << unavailable;
        QTest::newRow("another reason") << std::optional(Reason::other) << unavailable;
    }

    void bannerTellsTheAvailability()
    {
        QFETCH(std::optional<Availability::UnavailableReason>, reason);
        QFETCH(QString, footer);
        if (reason)
            m_fixture->model->setAvailability(Availability::unavailable(*reason));
        start();

        const bool isNotReady = reason == Availability::UnavailableReason::modelNotReady;
        QVERIFY(m_driver->showsText(footer));
        QCOMPARE(m_driver->shows(QAccessible::Button, "Check Now"), reason.has_value());
        QCOMPARE(m_driver->shows(QAccessible::AlertMessage, m_store->availabilityMessage()), reason.has_value());
        QCOMPARE(m_driver->shows(QAccessible::Animation, "Checking model readiness"), isNotReady);
        QCOMPARE(m_driver->showsText("macOS does not provide this app with a download percentage or transfer status."),
                 isNotReady);
    }

    void checksTheAvailabilityByItselfAndOnRequest()
    {
        m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
        start();
        QObject *timer = nullptr;
        for (QObject *child : m_driver->window()->findChildren<QObject *>()) {
            if (child->property("interval").toInt() == 10000)
                timer = child;
        }
        QVERIFY(timer && timer->property("repeat").toBool() && timer->property("running").toBool());
        const int checks = m_fixture->model->availabilityChecks();

        QVERIFY(QMetaObject::invokeMethod(timer, "triggered"));
        QCOMPARE(m_fixture->model->availabilityChecks(), checks + 1);
        m_driver->click(button("Check Now"));
        QCOMPARE(m_fixture->model->availabilityChecks(), checks + 2);
    }

private:
    QQuickItem *chatRow(const QString &title) const { return m_driver->find(QAccessible::ListItem, title); }
};

int main(int argc, char *argv[])
{
    return runWindowTest<WindowSidebarTest>(argc, argv);
}

#include "tst_windowsidebar.moc"
