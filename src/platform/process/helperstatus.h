// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace lumora {

/// What a helper program's exit status says to the program that started it.
enum HelperStatus {
    complete = 0,
    incomplete = 1, ///< because of the file
    unable = 2,     ///< whatever the file is: it was called wrongly, or the system refuses to confine it
};

} // namespace lumora
