// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QCoreApplication;

namespace lumora {

/// Waits for the first frame of the first window that the application shows, for the first one in which the window's
/// "store" is shown, where it has such a property, and a moment more until the process has come to rest. Then prints
/// one line, the times of both frames in nanoseconds of CLOCK_MONOTONIC and the process's resident and proportional
/// memory in kilobytes, and ends the application. To be called once, before the window.
void reportFirstFrame(QCoreApplication &application);

} // namespace lumora
