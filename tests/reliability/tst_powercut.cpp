// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/disk.h"
#include "reliability/person.h"
#include "reliability/rounds.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <deque>

using namespace lumora;

namespace {

struct Moment ///< of a day: a call that changes the disk
{
    FileCall call;
    QByteArray data;       ///< of the call, which has only a view of it
    size_t stepNumber = 0; ///< of the step that is under way
};

/// A day of use, with all that it does to the disk.
struct Day
{
    explicit Day(std::mt19937 &random);

    QTemporaryDir data;
    std::vector<Step> steps;
    std::vector<Holdings> holdings; ///< before each step, and at last
    std::deque<Moment> moments;
    QString surprise; ///< what was not as planned
};

Day::Day(std::mt19937 &random)
{
    constexpr int length = 24;
    holdings.push_back(after(Holdings(), {.kind = Step::Kind::newChat}));
    steps = plannedDay(holdings.front(), 1, length, random);

    size_t stepNumber = 0;
    const auto note = [&](const FileCall &call) {
        using Kind = FileCall::Kind;
        if (call.kind != Kind::read && call.kind != Kind::ask && call.kind != Kind::lock)
            moments.push_back({call, call.data.toByteArray(), stepNumber});
    };
    const FileWatching watching({.folder = data.path().toStdString(), .after = note});
    Person person(data.path());
    for (; stepNumber < steps.size(); ++stepNumber) {
        holdings.push_back(after(holdings.back(), steps[stepNumber]));
        person.perform(steps[stepNumber]);
        if (surprise.isNull() && person.holdings() != holdings.back())
            surprise = text(steps[stepNumber]) + " gives\n" + text(person.holdings());
    }
}

/// What may become of what was not synced.
Disk::PowerCut anyCut(std::mt19937 &random)
{
    const Disk::Kept never = [] { return false; };
    const Disk::Kept always = [] { return true; };
    const Disk::Kept maybe = [&random] { return random() % 2 == 0; };
    const std::array cuts{Disk::PowerCut{never, never, never}, Disk::PowerCut{always, never, never},
                          Disk::PowerCut{always, never, always}, Disk::PowerCut{never, always, never},
                          Disk::PowerCut{maybe, maybe, maybe}};
    return cuts[random() % cuts.size()];
}

} // namespace

/// The power goes at any moment of a day, and what was not synced is lost, or a part of it. The next start finds what
/// was there before the step that was under way, or after it.
class PowerCutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNextStartFindsAllOfEachStep()
    {
        std::mt19937 random(seed());
        for (int day = 0; day < rounds(1); ++day) {
            liveThrough(Day(random), random);
            if (QTest::currentTestFailed())
                return;
        }
        qInfo("%d power cuts", m_cuts);
        QVERIFY(m_cuts > 100);
    }

private:
    void liveThrough(const Day &day, std::mt19937 &random)
    {
        constexpr int cutsPerDay = 250;
        QVERIFY2(day.surprise.isNull(), qPrintable(day.surprise));
        Disk disk(day.data.path().toStdString());
        for (const Moment &moment : day.moments) {
            FileCall call = moment.call;
            call.data = moment.data;
            disk.apply(call);
            if (random() % day.moments.size() >= cutsPerDay)
                continue;
            cutNow(disk, day, moment, random);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void cutNow(const Disk &disk, const Day &day, const Moment &moment, std::mt19937 &random)
    {
        ++m_cuts;
        const QTemporaryDir data;
        disk.restore(anyCut(random), data.path());
        const QString found = text(Person(data.path()).holdings());
        const QString before = text(day.holdings[moment.stepNumber]);
        const QString afterwards = text(day.holdings[std::min(moment.stepNumber + 1, day.steps.size())]);
        if (found == before || found == afterwards)
            return;
        qInfo("after %s, of %s", moment.call.path.c_str(),
              qUtf8Printable(text(day.steps[std::min(moment.stepNumber, day.steps.size() - 1)])));
        QCOMPARE(found, afterwards);
    }

    int m_cuts = 0;
};

QTEST_GUILESS_MAIN(PowerCutTest)
#include "tst_powercut.moc"
