// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/windowtest.h"

#include <QInputMethodEvent>

using namespace lumora;

class WindowComposerTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void returnSends_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

        QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
        QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
        QTest::newRow("Control") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::AltModifier);
    }

    void returnSends()
    {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        start();

        m_driver->type("Hello there");
        QCOMPARE(m_store->draft(), "Hello there");
        m_driver->press(key, modifiers);

        QCOMPARE(m_store->draft(), QString());
        QTRY_VERIFY(m_driver->showsText("Scripted reply."));
        QVERIFY(m_driver->showsText("Hello there"));
        QTRY_COMPARE(m_fixture->model->requests().size(), 1);
        QCOMPARE(m_store->selectedConversation()->messages.size(), size_t(2));
    }

    void shiftReturnBreaksTheLine()
    {
        start();

        m_driver->type("a");
        m_driver->press(Qt::Key_Return, Qt::ShiftModifier);
        m_driver->type("b");
        m_driver->press(Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);

        QCOMPARE(m_store->draft(), "a\nb\n");
        QVERIFY(!m_store->isGenerating());
    }

    void nothingIsSentWhereThereIsNothingToSend_data()
    {
        QTest::addColumn<QString>("draft");
        QTest::addColumn<bool>("isAvailable");

        QTest::newRow("nothing") << QString() << true;
        QTest::newRow("blanks") << "  " << true;
        QTest::newRow("no model") << "Hello" << false;
    }

    void nothingIsSentWhereThereIsNothingToSend()
    {
        QFETCH(QString, draft);
        QFETCH(bool, isAvailable);
        if (!isAvailable)
            m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
        start();

        m_driver->type(draft);
        m_driver->press(Qt::Key_Return);
        QVERIFY(!button("Send")->isEnabled());
        m_driver->click(button("Send"));

        QCOMPARE(m_store->draft(), draft);
        QVERIFY(m_store->selectedConversation()->messages.empty());
    }

    void returnThatEndsACompositionDoesNotSend()
    {
        start();
        m_driver->type("a");
        QInputMethodEvent composing("ni", {});
        QCoreApplication::sendEvent(m_driver->window()->activeFocusItem(), &composing);

        m_driver->press(Qt::Key_Return);
        QVERIFY(m_store->selectedConversation()->messages.empty());
        QVERIFY(!m_store->draft().contains(u'\n'));

        QInputMethodEvent committed;
        committed.setCommitString("\u4f60");
        QCoreApplication::sendEvent(m_driver->window()->activeFocusItem(), &committed);
        QVERIFY(m_store->draft().endsWith(u'\u4f60'));
        m_driver->press(Qt::Key_Return);
        QCOMPARE(m_store->selectedConversation()->messages.size(), size_t(2));
    }

    void sendAndStopSwap()
    {
        m_fixture->model->enqueue(Script::text("Half a").then(Script::hold()));
        start();
        QVERIFY(!m_driver->shows(QAccessible::Button, "Stop"));

        m_driver->type("Hello");
        m_driver->click(button("Send"));
        QVERIFY(!m_driver->shows(QAccessible::Button, "Send"));
        QTRY_VERIFY(m_driver->showsText("Half a"));
        m_driver->click(button("Stop"));

        QVERIFY(!m_store->isGenerating());
        QVERIFY(m_driver->shows(QAccessible::Button, "Send"));
        QVERIFY(m_driver->showsText("Half a"));
        QCOMPARE(m_driver->focusName(), "Message");
    }

    void modeControlSetsTheStyle()
    {
        start();
        QQuickItem *structured = m_driver->find(QAccessible::RadioButton, "Structured");
        m_driver->click(structured);
        QCOMPARE(m_store->replyStyle(), ReplyStyle::structured);
        QCOMPARE(m_driver->focusName(), "Message");

        structured->forceActiveFocus(Qt::TabFocusReason);
        m_driver->press(Qt::Key_Left);
        QCOMPARE(m_store->replyStyle(), ReplyStyle::chat);
        QCOMPARE(m_driver->focusName(), "Chat");
        m_driver->press(Qt::Key_Left);
        QCOMPARE(m_store->replyStyle(), ReplyStyle::chat);
    }

    void meterCountsTheContext()
    {
        m_fixture->model->setTokenCounter([](const QString &) { return 1234567; });
        start();
        QVERIFY(m_driver->showsText("Context 0 / 4096 tokens"));
        say("Hello");
        QTRY_VERIFY(m_driver->showsText("Context 1234567 / 4096 tokens"));
    }

    void narrowComposerShortensItsTexts()
    {
        start();
        QVERIFY(m_driver->showsText("Private · On this Mac"));
        QVERIFY(!m_driver->showsText("On-device"));
        const QQuickItem *meter = m_driver->find(QAccessible::StaticText, "Context 0 / 4096 tokens");
        const QQuickItem *mode = m_driver->find(QAccessible::RadioButton, "Chat");
        QVERIFY(meter->mapToScene({}).x() > mode->mapToScene({}).x() + 240);

        m_driver->window()->resize(620, 520);
        QTRY_VERIFY(m_driver->showsText("On-device"));
        QVERIFY(!m_driver->showsText("Private · On this Mac"));
        QTRY_VERIFY(meter->mapToScene({}).y() > mode->mapToScene({0, mode->height()}).y());
    }
};

int main(int argc, char *argv[])
{
    return runWindowTest<WindowComposerTest>(argc, argv);
}

#include "tst_window.moc"
