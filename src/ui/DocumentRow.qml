// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import org.lumora.ui

/// One imported document.
SymbolLabel {
    required property importedDocument modelData

    font.pixelSize: Theme.captionSize
    symbol: Symbols.document
    text: modelData.name
}
