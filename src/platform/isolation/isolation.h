// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <vector>

namespace lumora {

/// What a process may still open. A folder stands for all that lies in it; what does not exist is passed over.
struct Reach
{
    std::vector<std::string> files;   ///< to read
    std::vector<std::string> devices; ///< to read, write and control
};

/// What every program reads of the system to run at all: libraries, their data, facts about the processor.
std::vector<std::string> systemFiles();

/// Takes from this process, for good: all files but those within reach, and of these all but reading; every way to
/// make, change or remove a file; sockets of any kind; starting programs and processes; signals to and looks into other
/// processes; what root may do beyond others. Threads may be started. What is open already stays so. A call that is
/// refused fails with an error.
///
/// Where the kernel lacks a means, the process goes on with the others; see missingIsolation(). False where the kernel
/// has it and refuses: then nothing from outside may be read. While there is one thread.
bool isolate(const Reach &reach);

/// What isolate() cannot do on this kernel, as a sentence for the log; empty where it does all.
std::string missingIsolation();

} // namespace lumora
