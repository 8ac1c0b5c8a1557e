// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/rounds.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace lumora;

/// Several programs start at the same moment, on what a killed one has left, or while somebody deletes the folder. One
/// of them holds it, and the others have asked that one to show itself.
class TwoProgramsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneHoldsTheFolder();
    void cleanupTestCase() { endHolder(); }

private:
    using Program = std::unique_ptr<QProcess>;
    Program start() const;
    /// What happens before the programs start.
    void prepare();
    void endHolder();
    QString folder() const { return m_data.filePath("Lumora"); }

    QTemporaryDir m_data;
    QTemporaryDir m_session;
    Program m_holder;
    std::mt19937 m_random{seed()};
};

constexpr int patience = 60000; // milliseconds

void TwoProgramsTest::oneHoldsTheFolder()
{
    constexpr int fewRounds = 8;
    constexpr int programsAtOnce = 4;
    for (int round = 0; round < rounds(fewRounds); ++round) {
        prepare();
        std::vector<Program> programs;
        for (int i = 0; i < programsAtOnce; ++i)
            programs.push_back(start());
        for (Program &program : programs) {
            QVERIFY(program->canReadLine() || program->waitForReadyRead(patience));
            const QByteArray outcome = program->readLine().trimmed();
            if (outcome == "first" && !m_holder) {
                m_holder = std::move(program);
                continue;
            }
            QCOMPARE(outcome, "second");
            QVERIFY(program->state() == QProcess::NotRunning || program->waitForFinished(patience));
        }
        QVERIFY(m_holder);
    }
}

void TwoProgramsTest::prepare()
{
    // What programs leave that were killed while they made it, or that ran on a computer with another name.
    const QByteArrayList locks{QByteArray(), "1\nlumora\nanother-computer\n\n\n"};
    if (m_holder && m_random() % 3 == 0) {
        QVERIFY(QDir(folder()).removeRecursively()); // under the program that holds it
        return;
    }
    endHolder();
    QVERIFY(QDir().mkpath(folder()));
    QFile lock(folder() + "/lock");
    if (m_random() % 2 == 0)
        QVERIFY(lock.open(QIODevice::WriteOnly) && lock.write(locks.at(qsizetype(m_random() % 2))) >= 0);
}

void TwoProgramsTest::endHolder()
{
    if (!m_holder)
        return;
    m_holder->kill();
    QVERIFY(m_holder->waitForFinished(patience));
    m_holder.reset();
}

TwoProgramsTest::Program TwoProgramsTest::start() const
{
    auto program = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", m_session.path());
    program->setProcessEnvironment(environment);
    program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program->start(QStringLiteral(LUMORA_CLAIM_PROGRAM), {folder()});
    return program;
}

QTEST_GUILESS_MAIN(TwoProgramsTest)
#include "tst_twoprograms.moc"
