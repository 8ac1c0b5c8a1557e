// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/filecalls.h"
#include "reliability/person.h"

#include <QCoreApplication>
#include <QStringList>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace lumora;

namespace {

/// Ends this process at one of its calls about files, in the middle of it where it writes.
int answer(const FileCall &call, int &callsLeft)
{
    if (--callsLeft != 0)
        return 0;
    if (call.kind == FileCall::Kind::write)
        ::pwrite(call.handle, call.data.data(), size_t(call.data.size()) / 2, call.offset);
    return std::raise(SIGKILL);
}

} // namespace

/// A program that is used for a day, without a window: DATA-DIRECTORY PICKED-FOLDER SEED FIRST-NUMBER LENGTH CALL.
/// Writes a line at the end of each step. It is killed at this call about files; 0: at none.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    int callsLeft = arguments.at(6).toInt();
    const FileWatching watching({.folder = arguments.at(1).toStdString(),
                                 .before = [&](const FileCall &call) { return answer(call, callsLeft); }});
    Person person(arguments.at(1), arguments.at(2));
    std::mt19937 random(arguments.at(3).toUInt());
    for (const Step &step : plannedDay(person.holdings(), arguments.at(4).toInt(), arguments.at(5).toInt(), random)) {
        person.perform(step);
        std::puts("done");
        std::fflush(stdout);
    }
    return EXIT_SUCCESS;
}
