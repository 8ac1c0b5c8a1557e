// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/program.h"
#include "store/storefixture.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <csignal>

using namespace lumora;
using namespace std::chrono_literals;

namespace {

constexpr int tookTooLong = 99;

QQuickWindow *shownWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(windows.first());
}

ChatStore *shownStore()
{
    return shownWindow() ? shownWindow()->property("store").value<ChatStore *>() : nullptr;
}

} // namespace

/// The whole program, as the desktop and the session see it, with a bus of the session.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        qputenv("XDG_DATA_HOME", m_fixture->data.path().toLocal8Bit());
        qputenv("XDG_STATE_HOME", m_fixture->data.path().toLocal8Bit());
    }
    void cleanup() { m_fixture.reset(); }

    void aSignalLeavesWhatThereIsOfAReply_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("the session ends") << SIGTERM;
        QTest::newRow("the terminal is closed") << SIGHUP;
        QTest::newRow("Ctrl+C") << SIGINT;
    }

    void aSignalLeavesWhatThereIsOfAReply()
    {
        QFETCH(int, signal);
        m_fixture->model->enqueue(Script::text("Half of it").then(Script::hold()));

        const int status = run([signal] {
            shownStore()->setDraft("All of it?");
            shownStore()->send();
            QTRY_COMPARE(shownStore()->selectedConversation()->messages.all().back().text, "Half of it");
            QCOMPARE(::raise(signal), 0);
        });

        QCOMPARE(status, EXIT_SUCCESS);
        QCOMPARE(m_fixture->saved().front().messages.all().back().text, "Half of it");
        QCOMPARE(m_fixture->model->cancelledReplies(), 1);
    }

    void theDesktopOpensANewChatAndRaisesTheWindow()
    {
        m_fixture->write({conversation("Old", 1, {userMessage("a"), assistantMessage("b")})});
        // Before there is a chat in the window, as when the desktop has just started the program for that.
        QTimer::singleShot(0, this, [] {
            QVERIFY(!shownStore());
            call("ActivateAction", {"new-chat", QVariantList(), QVariantMap()});
            call("ActivateAction", {"no such action", QVariantList(), QVariantMap()});
        });

        const int status = run([] {
            QTRY_COMPARE(titles(shownStore()->conversations()), QStringList({"New Chat", "Old"}));
            shownWindow()->showMinimized();
            QTRY_VERIFY(shownWindow()->windowStates().testFlag(Qt::WindowMinimized));
            call("Activate", {QVariantMap{{"activation-token", "of the dock"}}});
            QTRY_VERIFY(!shownWindow()->windowStates().testFlag(Qt::WindowMinimized));
            shownWindow()->close();
        });

        QCOMPARE(status, EXIT_SUCCESS);
    }

private:
    /// Runs the program until it ends, and does the steps once its window is filled. They have to bring about the end.
    int run(const std::function<void()> &steps) const
    {
        QObject during;
        QTimer poll;
        connect(&poll, &QTimer::timeout, &during, [&] {
            if (!shownStore())
                return;
            poll.stop();
            steps();
        });
        poll.start(1ms);
        QTimer::singleShot(30s, &during, [] { QCoreApplication::exit(tookTooLong); });
        return runProgram(m_fixture->model);
    }

    static void call(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall("org.lumora.Lumora", "/org/lumora/Lumora",
                                                              "org.freedesktop.Application", method);
        message.setArguments(arguments);
        QVERIFY(QDBusConnection::sessionBus().send(message));
    }

    std::unique_ptr<StoreFixture> m_fixture;
};

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    prepareApplication();
    const QGuiApplication application(argc, argv);
    ProgramTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program.moc"
