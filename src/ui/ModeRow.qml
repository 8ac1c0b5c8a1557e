// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// The response mode beside the context meter, or above it where the width does not hold both.
Item {
    id: row

    required property ChatStore store

    readonly property bool isWide: mode.width + 32 + meter.implicitWidth <= width

    implicitHeight: isWide ? mode.height : mode.height + 6 + meter.height

    ModeControl {
        id: mode

        style: row.store.replyStyle
        width: 240
        x: Theme.isMirrored ? row.width - width : 0

        onChosen: style => row.store.replyStyle = style
    }
    ContextMeter {
        id: meter

        // The linter knows no 64-bit numbers.
        size: row.store.contextSize // qmllint disable
        tokens: row.store.contextTokens // qmllint disable
        x: row.isWide !== Theme.isMirrored ? row.width - width : 0
        y: row.isWide ? Math.round((mode.height - height) / 2) : mode.height + 6
    }
}
