// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace lumora {

/// Takes from this process what reading a file does not need: more address space (in bytes) and processor time (in
/// seconds) than given, files to write, a core file that would hold what the user keeps, more rights, and a life beyond
/// the program that reads its output. False where the system refuses one of them; then no file may be read.
bool confine(std::uint64_t addressSpace, std::uint64_t processorTime);

} // namespace lumora
