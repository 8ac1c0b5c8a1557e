// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/timeofday.h"

namespace lumora {

namespace {

/// The pattern without its time zone ("t" outside of quotes) and what stands around that.
QString withoutZone(const QString &pattern)
{
    QString kept;
    bool isQuoted = false;
    for (const QChar unit : pattern) {
        if (unit == u'\'')
            isQuoted = !isQuoted;
        const bool belongsToZone =
            !isQuoted && (unit == u't' || unit == u'(' || unit == u')' || unit == u'[' || unit == u']');
        if (!belongsToZone)
            kept += unit;
    }
    return kept.simplified();
}

} // namespace

QString timeOfDay(const QTime &time, const QLocale &locale)
{
    // Only the long form has seconds, and it names the time zone.
    return locale.toString(time, withoutZone(locale.timeFormat(QLocale::LongFormat)));
}

} // namespace lumora
