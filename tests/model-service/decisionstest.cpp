// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/contextsize.h"
#include "core/machine.h"
#include "core/positions.h"
#include "core/sampling.h"
#include "core/textpacer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <map>
#include <unistd.h>

using namespace lumora;
using namespace lumora::service;
using namespace std::chrono_literals;

/// The smaller decisions: sizes, sampling, pace.
class DecisionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosesAContext_data()
    {
        QTest::addColumn<qint64>("trained");
        QTest::addColumn<qint64>("requested"); // 0 = no limit
        QTest::addColumn<qint64>("freeTokens");
        QTest::addColumn<qint64>("chosen"); // 0 = not enough memory
        QTest::newRow("the file's") << 4096LL << 0LL << 100000LL << 4096LL;
        QTest::newRow("the request's") << 4096LL << 1000LL << 100000LL << 1000LL;
        QTest::newRow("no more than the file's") << 4096LL << 8000LL << 100000LL << 4096LL;
        QTest::newRow("memory's") << 131072LL << 0LL << 10000LL << 9984LL;
        QTest::newRow("just enough") << 4096LL << 0LL << 512LL << 512LL;
        QTest::newRow("not enough") << 4096LL << 0LL << 511LL << 0LL;
        QTest::newRow("nothing left") << 4096LL << 0LL << -5LL << 0LL;
        QTest::newRow("small by itself") << 128LL << 0LL << 200LL << 128LL;
        QTest::newRow("small by request") << 4096LL << 100LL << 200LL << 100LL;
        QTest::newRow("senseless limit") << 4096LL << -3LL << 100000LL << 1LL;
    }

    void choosesAContext()
    {
        QFETCH(qint64, trained);
        QFETCH(qint64, requested);
        QFETCH(qint64, freeTokens);
        QFETCH(qint64, chosen);
        ContextNeeds needs{.trainedTokens = trained, .requestedTokens = {}, .bytesPerToken = 4096, .freeBytes = 0};
        if (requested != 0)
            needs.requestedTokens = requested;
        needs.freeBytes = 4 * needs.bytesPerToken * freeTokens;
        QCOMPARE(chooseContextSize(needs).value_or(0), chosen);
        needs.bytesPerToken = 0; // a state that does not grow
        QVERIFY(chooseContextSize(needs).has_value());
    }

    void triesLess()
    {
        std::vector<Attempt> attempts;
        for (std::optional<Attempt> next = Attempt{true, 1536}; next; next = nextAttempt(*next))
            attempts.push_back(*next);
        QVERIFY(attempts == (std::vector<Attempt>{{true, 1536}, {false, 1536}, {false, 768}, {false, 512}}));
        QVERIFY(!nextAttempt({false, 100})); // small by request
    }

    void readsTheMachine()
    {
        QTemporaryDir root;
        const auto write = [&](const char *path, const char *text) {
            const QFileInfo info(root.filePath(QString::fromLatin1(path)));
            QVERIFY(QDir().mkpath(info.path()));
            QFile file(info.filePath());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
        };
        const std::string folder = root.path().toStdString();
        write("proc/meminfo", "MemTotal: 8000 kB\nMemFree:  10 kB\nMemAvailable:    5000 kB\n");
        QCOMPARE(availableMemory(folder), 5000 * 1024);
        write("proc/self/cgroup", "0::/a/b\n");
        write("sys/fs/cgroup/a/b/memory.max", "max\n");
        write("sys/fs/cgroup/a/b/memory.current", "700\n");
        QCOMPARE(availableMemory(folder), 5000 * 1024);
        write("sys/fs/cgroup/a/memory.max", "1000\n");
        write("sys/fs/cgroup/a/memory.current", "900\n");
        QCOMPARE(availableMemory(folder), 100);
        write("sys/fs/cgroup/a/memory.stat", "anon 300\ninactive_file 50\nactive_file 500\n");
        QCOMPARE(availableMemory(folder), 150);
        write("proc/self/cgroup", "0::/\n");
        QCOMPARE(availableMemory(folder), 5000 * 1024);
        write("sys/fs/cgroup/memory.max", "2000\n");
        write("sys/fs/cgroup/memory.current", "800\n");
        QCOMPARE(availableMemory(folder), 1200);

        const int threads = physicalCores(folder); // no topology: every processor is a core
        QVERIFY(threads >= 1);
        for (int cpu = 0; cpu < sysconf(_SC_NPROCESSORS_CONF); ++cpu)
            write(qPrintable(QStringLiteral("sys/devices/system/cpu/cpu%1/topology/thread_siblings_list").arg(cpu)),
                  "0-1\n");
        QCOMPARE(physicalCores(folder), 1);
    }

    void settlesSampling_data()
    {
        QTest::addColumn<SamplingDefaults>("defaults");
        QTest::addColumn<wire::Options>("options");
        QTest::addColumn<SamplingSettings>("settings");
        using Sampling = wire::Sampling;
        const auto row = [](const char *name, SamplingDefaults defaults, wire::Options options,
                            SamplingSettings settings) { QTest::newRow(name) << defaults << options << settings; };
        row("ours", {}, {}, {});
        row("the model's", {.temperature = 0.3, .topK = 7, .topP = 0.5, .minP = 0.0, .penaltyRepeat = 1.1}, {},
            {.temperature = 0.3, .topK = 7, .topP = 0.5, .minP = 0.0, .penaltyRepeat = 1.1});
        row("the request's", {.temperature = 0.3}, {.temperature = 1.5}, {.temperature = 1.5});
        row("greedy by request", {}, {.sampling = Sampling::greedy}, {.greedy = true});
        row("greedy by temperature", {}, {.temperature = 0.0}, {.greedy = true, .temperature = 0.0});
        row("random against the model's temperature", {.temperature = 0.0}, {.sampling = Sampling::random}, {});
        row("senseless values", {.topK = -1, .topP = 7.0, .minP = -2.0, .penaltyLastTokens = -1, .penaltyRepeat = 0.0},
            {}, {.topK = 0, .topP = 1.0, .minP = 0.0, .penaltyLastTokens = 0});
    }

    void settlesSampling()
    {
        QFETCH(SamplingDefaults, defaults);
        QFETCH(wire::Options, options);
        QFETCH(SamplingSettings, settings);
        QVERIFY(samplingSettings(defaults, options) == settings);
        defaults.temperature = std::nan("");
        options.temperature.reset();
        options.sampling.reset();
        QVERIFY(samplingSettings(defaults, options).greedy);
    }

    void pacesText()
    {
        std::vector<std::string> sent;
        TextPacer::Clock::time_point now{1h};
        TextPacer pacer([&](std::string piece) { sent.push_back(std::move(piece)); }, [&] { return now; });
        pacer.add("a");
        QCOMPARE(sent, std::vector<std::string>{"a"});
        for (const char *const piece : {"b", "c", ""}) {
            now += 10ms;
            pacer.add(piece);
        }
        QCOMPARE(sent.size(), 1);
        now += 3ms;
        pacer.add("d");
        QCOMPARE(sent.back(), std::string("bcd"));
        pacer.add("e");
        pacer.flush();
        pacer.flush();
        QCOMPARE(sent, (std::vector<std::string>{"a", "bcd", "e"}));
    }

    void countsPositions()
    {
        Positions positions;
        positions.add(3, 12, 4); // of 12 tokens in three rows of four
        positions.add(20, 5, 5); // in a row
        const std::map<std::size_t, int> firsts = {{0, 0}, {3, 3}, {15, 7}, {16, 8}, {20, 12}, {25, 17}, {30, 22}};
        for (const auto &[count, position] : firsts)
            QCOMPARE(positions.after(count), position);
        const std::map<int, std::size_t> counts = {{-1, 0}, {0, 1},  {2, 3},   {3, 15},
                                                   {6, 15}, {7, 16}, {12, 25}, {18, 27}};
        for (const auto &[position, count] : counts)
            QCOMPARE(positions.upTo(position), count);

        positions.keep(20);
        QCOMPARE(positions.after(24), 16);
        QCOMPARE(positions.upTo(6), 15U);
        positions.keep(3);
        QCOMPARE(positions.after(24), 24);
        QCOMPARE(positions.upTo(6), 7U);
    }
};

QTEST_GUILESS_MAIN(DecisionsTest)
#include "decisionstest.moc"
