// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace lumora {

/// Has the toolkit open the desktop's own file dialogs through the portal, where one can be reached and the user has
/// not asked for another way (QT_QPA_PLATFORMTHEME). To be called before the application object is made.
void preferPortalFileDialogs();

} // namespace lumora
