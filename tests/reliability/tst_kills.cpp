// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/person.h"
#include "reliability/rounds.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <memory>

using namespace lumora;

/// A program that is used is killed, again and again, at one of its calls about files or at any moment. The next start
/// finds what was there before the step that was under way, or after it.
class KillsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNextStartFindsAllOfEachStep();

private:
    QProcess::ExitStatus runOneDay(int round);
    void check(const QByteArray &progress, const std::vector<Step> &steps);
    void startAfresh();

    std::mt19937 m_random{seed()};
    std::unique_ptr<QTemporaryDir> m_data;
    QTemporaryDir m_picked;
    Holdings m_holdings;
};

void KillsTest::theNextStartFindsAllOfEachStep()
{
    constexpr int fewRounds = 12;
    const int wanted = rounds(fewRounds);
    int kills = 0;
    startAfresh();
    for (int round = 1; kills < wanted; ++round) {
        QVERIFY2(round < 10 * wanted, "too few of the programs were killed");
        kills += runOneDay(round) == QProcess::CrashExit ? 1 : 0;
        if (QTest::currentTestFailed())
            return;
        constexpr size_t many = 30; // more would make the days long
        if (m_holdings.chats.size() + size_t(m_holdings.documents.size()) > many)
            startAfresh();
    }
    qInfo("%d kills", kills);
}

void KillsTest::startAfresh()
{
    m_data = std::make_unique<QTemporaryDir>();
    m_holdings = after(Holdings(), {.kind = Step::Kind::newChat});
}

QProcess::ExitStatus KillsTest::runOneDay(int round)
{
    constexpr int length = 12;
    constexpr int callsOfADay = 1500;
    constexpr int durationOfADay = 1500; // milliseconds
    constexpr int patience = 60000;
    const auto daySeed = unsigned(m_random());
    const int firstNumber = round * 100;
    std::mt19937 sameRandom(daySeed);
    const std::vector<Step> steps = plannedDay(m_holdings, firstNumber, length, sameRandom);

    const bool isKilledByItself = m_random() % 2 == 0;
    const int call = isKilledByItself ? 1 + int(m_random() % callsOfADay) : 0;
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral(LUMORA_DAY_PROGRAM),
                  {m_data->path(), m_picked.path(), QString::number(daySeed), QString::number(firstNumber),
                   QString::number(length), QString::number(call)});
    if (!program.waitForFinished(isKilledByItself ? patience : int(m_random() % durationOfADay)))
        program.kill();
    if (program.state() != QProcess::NotRunning && !program.waitForFinished(patience))
        QTest::qFail("the program does not end", __FILE__, __LINE__);
    check(program.readAllStandardOutput(), steps);
    return program.exitStatus();
}

void KillsTest::check(const QByteArray &progress, const std::vector<Step> &steps)
{
    const auto stepsDone = size_t(progress.count('\n'));
    Holdings before = m_holdings;
    for (size_t i = 0; i < stepsDone; ++i)
        before = after(before, steps[i]);
    const Person person(m_data->path());
    m_holdings = person.holdings();
    QVERIFY2(person.store().errorMessage().isNull(), qPrintable(person.store().errorMessage()));
    if (m_holdings == before)
        return;
    QVERIFY2(stepsDone < steps.size(), qPrintable("after the end: " + text(m_holdings)));
    QVERIFY2(m_holdings == after(before, steps[stepsDone]),
             qPrintable("during " + text(steps[stepsDone]) + ": " + text(m_holdings)));
}

QTEST_GUILESS_MAIN(KillsTest)
#include "tst_kills.moc"
