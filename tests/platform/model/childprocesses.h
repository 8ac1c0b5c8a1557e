// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

namespace lumora {

/// The process ids of what the test's threads have started.
inline QList<int> childProcesses()
{
    const QString threads = QStringLiteral("/proc/self/task/");
    QList<int> pids;
    for (const QString &thread : QDir(threads).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(threads + thread + QStringLiteral("/children"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &word : file.readAll().simplified().split(' ')) {
            if (const int pid = word.toInt(); pid > 0)
                pids.append(pid);
        }
    }
    return pids;
}

} // namespace lumora
