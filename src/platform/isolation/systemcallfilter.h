// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace lumora {

enum class Opening {
    forReading, ///< no file can be opened for writing
    any,
};

/// Has the kernel refuse, to all threads and for good, the calls that isolate() names. A call that is refused fails
/// with EPERM, or with ENOSYS where there is an older one that does the same. The process has promised before to gain
/// no rights any more. False where the kernel does not take it.
bool filterSystemCalls(Opening opening);

} // namespace lumora
