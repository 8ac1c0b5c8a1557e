// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/isolation/isolation.h"

/// The kernel's own rules for which files a process may open.
namespace lumora::landlock {

/// Of the kernel's interface; 0 where there is none, or it is switched off.
int version();

/// For the calling thread, and whatever it starts; with as much as this kernel knows. False where it refuses.
bool restrictTo(const Reach &reach);

} // namespace lumora::landlock
