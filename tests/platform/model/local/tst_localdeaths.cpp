// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/childprocesses.h"
#include "platform/model/languagemodelsession.h"
#include "platform/model/local/localservicetest.h"

#include <QFile>
#include <QProcess>

#include <csignal>

using namespace lumora;
using namespace std::chrono_literals;

class LocalDeathsTest : public LocalServiceTest
{
    Q_OBJECT

private Q_SLOTS:
    void deathInMidReplyIsTold_data()
    {
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QString>("failure"); // a part of it
        const auto row = [](const char *name, const QString &prompt, const QString &failure) {
            QTest::newRow(name) << prompt << failure;
        };
        row("crash", "abort", "crashed (signal 6)");
        row("killed", "kill", "memory");
        row("stopped", "terminate", "stopped from outside");
        row("exit", "exit", "ended by itself (exit code 3)");
        row("frame without an end", "huge", "makes no sense");
        row("frame without a message", "nonsense", "makes no sense");
        row("answer to another question", "senseless", "makes no sense");
    }

    void deathInMidReplyIsTold()
    {
        QFETCH(QString, prompt);
        QFETCH(QString, failure);
        becomeAvailable();
        const qint64 pid = servicePid();
        const TestReply reply(*m_service, prompt);
        QTRY_VERIFY(reply.hasEnded());
        QVERIFY2(reply.failure && reply.failure->contains(failure), qPrintable(reply.failure.value_or("none")));
        QCOMPARE(reply.text, "So far ");

        // Asked at once, before the new one can have loaded.
        const auto count = outcomeOf(m_service->tokenCount("four"));
        QVERIFY(servicePid() != pid);
        QTRY_COMPARE(count->value, 4);
        QVERIFY(!isRunning(pid));
        QCOMPARE(m_service->availability(), Availability::available());
    }

    void memoryKillIsTold()
    {
        const auto countKills = [this](const QByteArray &kills) {
            return write("vmstat", "pgalloc 5\noom_kill " + kills + "\noom_kill_other 7\n");
        };
        m_settings.command.memoryCounters = countKills("9");
        becomeAvailable();
        const TestReply reply(*m_service, "stream");
        QTRY_VERIFY(!reply.text.isEmpty());

        countKills("10");
        for (const int pid : childProcesses())
            QVERIFY(::kill(pid, SIGKILL) == 0);
        QTRY_VERIFY(reply.hasEnded());
        QVERIFY2(reply.failure && reply.failure->contains("ran out of memory"),
                 qPrintable(reply.failure.value_or("none")));
    }

    void deathBetweenRequestsGoesUnnoticed()
    {
        becomeAvailable();
        const qint64 pid = servicePid();
        QVERIFY(::kill(static_cast<pid_t>(pid), SIGKILL) == 0);
        // Nothing here knows of it yet.
        const auto count = outcomeOf(m_service->tokenCount("four"));
        const TestReply reply(*m_service, "structured");
        QTRY_VERIFY(reply.hasEnded());
        QTRY_COMPARE(count->value, 4);
        QVERIFY(reply.usage);
    }

    void countThatKillsTheServiceFails()
    {
        becomeAvailable();
        const auto count = outcomeOf(m_service->tokenCount("abort"));
        QTRY_VERIFY(count->isDone());
        QVERIFY(count->failure && count->failure->contains("crashed"));
        const auto next = outcomeOf(m_service->tokenCount("four"));
        QTRY_COMPARE(next->value, 4);
    }

    void crashesInARowMakeItUnavailable_data()
    {
        QTest::addColumn<bool>("hasPaused");
        QTest::newRow("until the file changes") << false;
        QTest::newRow("until a pause has passed") << true;
    }

    void crashesInARowMakeItUnavailable()
    {
        QFETCH(bool, hasPaused);
        m_settings.patience.untilRetry = hasPaused ? 500ms : 1h;
        becomeAvailable();
        for (int crash = 0; crash < 3; ++crash) {
            const TestReply reply(*m_service, "abort");
            QTRY_VERIFY(reply.failure);
        }
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
        if (!hasPaused) {
            QTest::qWait(50);
            QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
            writeModel("GGUF better");
        }
        QTRY_COMPARE(m_service->availability(), Availability::available());
    }

    void onlyFinishedRepliesForgiveCrashes_data()
    {
        QTest::addColumn<QString>("prompt"); // between two crashes
        QTest::addColumn<bool>("forgives");
        QTest::newRow("finished") << "structured" << true;
        QTest::newRow("failed") << "fail" << false;
    }

    void onlyFinishedRepliesForgiveCrashes()
    {
        QFETCH(QString, prompt);
        QFETCH(bool, forgives);
        becomeAvailable();
        for (int crash = 0; crash < 3; ++crash) {
            const TestReply between(*m_service, prompt);
            QTRY_VERIFY(between.hasEnded());
            const TestReply crashing(*m_service, "abort");
            QTRY_VERIFY(crashing.failure);
            QCOMPARE(crashing.failure->contains("model keeps crashing"), !forgives && crash == 2);
        }
    }

    void hungServiceIsReplaced_data()
    {
        QTest::addColumn<bool>("isCount");
        QTest::newRow("cancelled reply") << false;
        QTest::newRow("count") << true;
    }

    void hungServiceIsReplaced()
    {
        QFETCH(bool, isCount);
        m_settings.patience.untilCancelled = 100ms;
        m_settings.patience.untilCounted = 100ms;
        becomeAvailable();
        const qint64 pid = servicePid();
        std::shared_ptr<Outcome<qint64>> count;
        if (isCount) {
            count = outcomeOf(m_service->tokenCount("hang"));
        } else {
            const TestReply reply(*m_service, "hang");
            QTRY_VERIFY(!reply.text.isEmpty());
            reply->cancel();
        }
        QVERIFY(servicePid() != pid);
        QVERIFY(!isRunning(pid));
        if (isCount)
            QTRY_VERIFY(count->failure && count->failure->contains("no longer answered"));
    }

    void destructionEndsEverything_data()
    {
        QTest::addColumn<QString>("prompt");
        QTest::newRow("idle") << QString();
        QTest::newRow("in mid-reply") << "stream";
        QTest::newRow("hung") << "hang";
    }

    void destructionEndsEverything()
    {
        QFETCH(QString, prompt);
        becomeAvailable();
        const qint64 pid = servicePid();
        std::optional<TestReply> reply;
        if (!prompt.isEmpty()) {
            reply.emplace(*m_service, prompt);
            QTRY_VERIFY(!reply->text.isEmpty());
        }
        const auto count = outcomeOf(m_service->tokenCount("four"));
        QVERIFY(isRunning(pid));
        m_service.reset();
        QVERIFY(count->isCancelled);
        QVERIFY(!isRunning(pid));
        if (reply)
            (*reply)->cancel();
    }

    void destructionEndsASession()
    {
        becomeAvailable();
        LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
        ResponseStream stream = session.streamResponse({"stream", {}}, {});
        const auto first = outcomeOf(stream.next());
        QTRY_VERIFY(first->value && first->value->has_value());
        const auto next = outcomeOf(stream.next());
        m_service.reset();
        // It may have had a snapshot waiting.
        QVERIFY(next->isDone());
        QVERIFY(outcomeOf(stream.next())->isCancelled);
    }

    void hungServiceEndsWithItsProgram()
    {
        writeModel("GGUF fine");
        QProcess host;
        host.start((SERVICE_HOST), {(FAKE_SERVICE), path("model.gguf")});
        QVERIFY(host.waitForReadyRead(30000));
        const qint64 pid = host.readAllStandardOutput().trimmed().toLongLong();
        QVERIFY(isRunning(pid));
        host.kill();
        QVERIFY(host.waitForFinished(30000));
        QTRY_VERIFY(!isRunning(pid));
    }
};

QTEST_GUILESS_MAIN(LocalDeathsTest)
#include "tst_localdeaths.moc"
