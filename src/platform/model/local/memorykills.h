// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

namespace lumora {

/// How often the kernel has killed a process for lack of memory since the system started. counters: a file as
/// /proc/vmstat is. Nothing where it does not tell.
std::optional<qint64> memoryKills(const QString &counters);

} // namespace lumora
