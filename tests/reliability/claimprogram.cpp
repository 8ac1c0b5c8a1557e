// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/singleinstance.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

using namespace lumora;

/// Claims the folder that it is given, says in a line what came of it, and holds it until it is ended where it is the
/// first.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    SingleInstance instance(QCoreApplication::arguments().at(1));
    const SingleInstance::Outcome outcome = instance.claim();
    std::puts(outcome == SingleInstance::Outcome::first    ? "first"
              : outcome == SingleInstance::Outcome::second ? "second"
                                                           : "neither");
    std::fflush(stdout);
    return outcome == SingleInstance::Outcome::first ? QCoreApplication::exec() : EXIT_SUCCESS;
}
