// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/memorykills.h"

#include <QFile>

namespace lumora {

std::optional<qint64> memoryKills(const QString &counters)
{
    QFile file(counters);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray name = "oom_kill ";
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name))
            return line.mid(name.size()).toLongLong();
    }
    return std::nullopt;
}

} // namespace lumora
