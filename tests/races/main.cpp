// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/racedriver.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <random>

using namespace lumora::races;

namespace {

constexpr int stepsOfAStory = 500; // in one data directory

/// Whether it found no difference.
bool race(int steps, quint32 seed)
{
    RaceDriver driver(seed);
    QString difference;
    for (int step = 0; step < steps && difference.isEmpty(); ++step)
        difference = driver.step();
    if (difference.isEmpty())
        difference = driver.finish();
    if (difference.isEmpty())
        return true;
    std::printf("%s\n\nThe latest steps, with a point for each turn of the event loop:\n%s\n", qPrintable(difference),
                qPrintable(driver.story()));
    return false;
}

} // namespace

// races STEPS [SEED]: random steps against the reference, from a seed of its own where none is given.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules("lumora.helper=false"); // there are no helpers here
    const QStringList arguments = QCoreApplication::arguments();
    const int steps = arguments.value(1).toInt();
    if (steps <= 0) {
        std::printf("Say how many steps: races STEPS [SEED]\n");
        return 2;
    }
    const quint32 first = arguments.size() > 2 ? arguments.at(2).toUInt() : std::random_device()();
    std::printf("%d steps from the seed %u\n", steps, first);
    for (int taken = 0; taken < steps; taken += stepsOfAStory) {
        const quint32 seed = first + quint32(taken / stepsOfAStory);
        if (!race(std::min(stepsOfAStory, steps - taken), seed)) {
            std::printf("\nThese steps come again, up to the threads' timing, with: races %d %u\n", stepsOfAStory,
                        seed);
            return 1;
        }
    }
    return 0;
}
