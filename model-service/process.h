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

} // namespace lumora::service
