// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumora {

/// Takes from this process what reading an open file does not need: more address space (in bytes) and processor time
/// (in seconds) than given, files to write, a core file that would hold what the user keeps, a life beyond the program
/// that reads its output, and all that isolate() takes; of files, it may go on to open the system's and the given ones.
/// False where the system refuses one of them; then no file may be read.
bool confine(std::uint64_t addressSpace, std::uint64_t processorTime, const std::vector<std::string> &files);

} // namespace lumora
