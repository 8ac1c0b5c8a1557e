// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QMetaType>

#include <compare>

namespace lumora {

/// A point in time as the files hold it: seconds, with fraction, since 2001-01-01 00:00:00 UTC. Kept as that very
/// double, so that what was read is written back bit for bit.
struct TimePoint
{
    double secondsSinceReference = 0;

    static TimePoint now();

    /// In local time, to the millisecond.
    QDateTime toDateTime() const;

    auto operator<=>(const TimePoint &) const = default;
};

} // namespace lumora
