// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace lumora::service {

/// While armed, a crash of this process writes these bytes to the descriptor and ends it with status 3. Only an
/// instruction that the processor does not know is left to end it by its signal. Empty bytes disarm it, and crashes are
/// what they were. One thread arms; any may crash.
void armCrashGuard(int descriptor, const std::string &bytes);

} // namespace lumora::service
