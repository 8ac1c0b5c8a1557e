// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// One tool call and how far it is.
SymbolLabel {
    required property toolEvent modelData

    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
    symbol: modelData.status === "Complete" ? Symbols.checkcircle : Symbols.gear
    text: modelData.name + " · " + modelData.status
}
