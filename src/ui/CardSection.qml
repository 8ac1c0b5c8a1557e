// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

/// A headed list of an answer card; absent where there is nothing to list.
Column {
    id: section

    required property string heading
    required property var lines // texts
    required property url symbol
    property bool isDirectional: false

    spacing: Theme.groupSpacing
    visible: lines.length > 0

    PlainText {
        Accessible.role: Accessible.Heading
        anchors.left: parent.left
        color: Theme.secondaryText
        font.bold: true
        font.pixelSize: Theme.captionSize
        text: section.heading
    }
    Repeater {
        model: section.lines

        delegate: SymbolLabel {
            required property string modelData

            font.pixelSize: Theme.bodySize
            lineHeight: 1.2
            spacing: Theme.rowSpacing
            isDirectional: section.isDirectional
            symbol: section.symbol
            symbolColor: Theme.accentSymbol
            text: modelData
            width: section.width
            wrapMode: Text.Wrap
        }
    }
}
