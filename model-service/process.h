// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <vector>

namespace lumora::service {

/// Closes what the program that started this one had open and did not mean to give, where the kernel can.
void closeInheritedFiles();

/// Keeps the standard output for frames: returns a descriptor of it, and lets whatever writes to standard output by
/// itself, such as a library, write to standard error instead. Negative where that fails.
int claimStandardOutput();

/// Takes from this process what it never needs: a life beyond the program that started it, a core file that would hold
/// what the user wrote, and all that isolate() takes; it may go on to read the given files and folders, and to use
/// graphics cards. A closed pipe becomes an error of the write. False where the kernel refuses. Before any thread.
bool confine(const std::vector<std::string> &files);

/// Lets the threads of one computation wait awake for each other only about as long as they do on a machine that does
/// nothing else, and then sleep: awake, they would keep the one that they wait for from running where others want the
/// processors, too. Before any thread, and before ggml's backends are loaded, whose OpenMP reads it once.
void limitBusyWaiting();

} // namespace lumora::service
