// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/process/helperprocess.h"

#include <QByteArray>

#include <chrono>
#include <optional>
#include <stop_token>

namespace lumora {

/// All that the helper writes until it has ended; nothing where that is too much or takes too long, or on stop.
std::optional<QByteArray> outputOf(const HelperProcess &process, std::chrono::steady_clock::time_point deadline,
                                   qint64 mostBytes, const std::stop_token &stop);

} // namespace lumora
