// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QList>
#include <QString>

namespace lumora {

/// The process ids of what the test's main thread has started.
inline QList<int> childProcesses()
{
    QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(QCoreApplication::applicationPid()));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<int> pids;
    const QList<QByteArray> words = file.readAll().simplified().split(' ');
    for (const QByteArray &word : words) {
        if (const int pid = word.toInt(); pid > 0)
            pids.append(pid);
    }
    return pids;
}

} // namespace lumora
