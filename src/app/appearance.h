// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace lumora {

/// Takes the desktop's font; where none is set, the one of the fonts at hand that suits the window best. To be called
/// once the application object exists.
void chooseFont();

/// Gives the windows the program's icon, for desktops that do not find it by the desktop file.
void chooseIcon();

} // namespace lumora
