// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// An instant (milliseconds since 1970-01-01 00:00:00 UTC) in full: weekday, month name, day and year, then hours,
/// minutes, seconds and the name of the time zone, as the locale writes them.
/// localeName, timeZone: as "de_DE" and "Europe/Berlin"; empty for the user's own. Any thread may ask.
QString fullDateTime(double millisecondsSinceEpoch, const QString &localeName = {}, const QString &timeZone = {});

} // namespace lumora
