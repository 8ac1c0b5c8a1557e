// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <string>

namespace lumora::service {

/// Bytes that can be used without pushing anything else out: what the kernel says, and no more than the limit of the
/// group of processes that this one runs in. root: where /proc and /sys stand.
std::int64_t availableMemory(const std::string &root = "");

/// Cores that this process may run on, each counted once however many threads it has; at least 1.
int physicalCores(const std::string &root = "");

/// Threads that a model of this many bytes is computed with fastest. For a small one they would wait for each other
/// longer than they compute, most of all on a busy machine.
int threadsFor(std::int64_t modelBytes, int cores);

} // namespace lumora::service
