// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace lumora::service {

/// Keeps the standard output for frames: returns a descriptor of it, and lets whatever writes to standard output by
/// itself, such as a library, write to standard error instead. Negative where that fails.
int claimStandardOutput();

/// Takes from this process what it never needs: more rights, a core file that would hold what the user wrote, and a
/// life beyond the program that started it. A closed pipe becomes an error of the write.
void confine();

/// Lets the threads of one computation wait awake for each other only about as long as they do on a machine that does
/// nothing else, and then sleep: awake, they would keep the one that they wait for from running where others want the
/// processors, too. Before any thread, and before ggml's backends are loaded, whose OpenMP reads it once.
void limitBusyWaiting();

} // namespace lumora::service
