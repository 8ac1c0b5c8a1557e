// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

namespace lumora::training {

/// Calls the function once for each number below the count, each on a thread of its own, and waits for all of them.
/// What one of them throws is thrown here.
void onThreads(int count, const std::function<void(int)> &work);

} // namespace lumora::training
