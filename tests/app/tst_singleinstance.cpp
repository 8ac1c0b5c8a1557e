// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/singleinstance.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using namespace lumora;

/// The program started on one data directory, again and again.
class SingleInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<QTemporaryDir>(); }

    void cleanup() { m_data.reset(); }

    void theFirstHoldsItsFolderOnly()
    {
        SingleInstance first(folder());
        QCOMPARE(first.claim(), SingleInstance::Outcome::first);
        SingleInstance elsewhere(m_data->filePath("Other"));
        QCOMPARE(elsewhere.claim(), SingleInstance::Outcome::first);
    }

    void aSecondStartRaisesTheFirst()
    {
        // On a thread of its own, since the second one waits for its answer.
        QThread thread;
        thread.start();
        auto *first = new SingleInstance(folder());
        QCOMPARE(first->claim(), SingleInstance::Outcome::first);
        QSignalSpy raised(first, &SingleInstance::raiseRequested);
        first->moveToThread(&thread);
        connect(&thread, &QThread::finished, first, &QObject::deleteLater);
        QSignalSpy newChats(first, &SingleInstance::newChatRequested);
        qputenv("XDG_ACTIVATION_TOKEN", "the desktop's leave");

        {
            SingleInstance second(folder());
            QCOMPARE(second.claim(), SingleInstance::Outcome::second);
            SingleInstance third(folder());
            QCOMPARE(third.claim(SingleInstance::Wish::newChat), SingleInstance::Outcome::second);
        }
        qunsetenv("XDG_ACTIVATION_TOKEN");
        thread.quit();
        thread.wait();
        QCOMPARE(raised, QList<QVariantList>(2, {"the desktop's leave"}));
        QCOMPARE(newChats.count(), 1);

        SingleInstance afterwards(folder());
        QCOMPARE(afterwards.claim(), SingleInstance::Outcome::first);
    }

    void aSecondProcessEndsInPeace()
    {
        const auto first = startProgram();
        waitUntilHeld();

        const auto second = startProgram();
        QVERIFY(second->waitForFinished(30000));
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        QVERIFY(second->readAll().contains("already running"));
        QCOMPARE(first->state(), QProcess::Running);
        first->kill();
        QVERIFY(first->waitForFinished());
    }

    void whatACrashLeftDoesNotStandInTheWay()
    {
        const auto crashed = startProgram();
        waitUntilHeld();
        crashed->kill();
        QVERIFY(crashed->waitForFinished());
        QVERIFY(QFile::exists(folder() + "/lock"));

        SingleInstance next(folder());
        QCOMPARE(next.claim(), SingleInstance::Outcome::first);
    }

    void aFolderThatCannotBeWrittenIsNoObstacle()
    {
        // A file stands where the folder should be.
        QFile file(folder());
        QVERIFY(file.open(QIODevice::WriteOnly));

        SingleInstance instance(folder());
        QCOMPARE(instance.claim(), SingleInstance::Outcome::unguarded);
    }

private:
    QString folder() const { return m_data->filePath("Lumora"); }

    std::unique_ptr<QProcess> startProgram() const
    {
        auto program = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", m_data->path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program->setProcessEnvironment(environment);
        program->setProcessChannelMode(QProcess::MergedChannels);
        program->start(QStringLiteral(LUMORA_PROGRAM), QStringList());
        return program;
    }

    void waitUntilHeld() const
    {
        // The history is written once the window's store is there, after the folder was claimed.
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder() + "/conversations.json"), 30000);
    }

    std::unique_ptr<QTemporaryDir> m_data;
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "tst_singleinstance.moc"
