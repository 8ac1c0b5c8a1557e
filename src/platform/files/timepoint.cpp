// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/timepoint.h"

#include <chrono>

namespace lumora {

namespace {

constexpr double referenceSinceEpoch = 978307200; // 2001-01-01 00:00:00 UTC
constexpr double millisecondsPerSecond = 1000;

} // namespace

TimePoint TimePoint::now()
{
    // Finer than a QDateTime: chats touched in the same millisecond keep their order.
    const std::chrono::duration<double> sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {sinceEpoch.count() - referenceSinceEpoch};
}

QDateTime TimePoint::toDateTime() const
{
    return QDateTime::fromMSecsSinceEpoch(
        qint64((secondsSinceReference + referenceSinceEpoch) * millisecondsPerSecond));
}

} // namespace lumora
