// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// A text after a symbol. One line is cut where it is too long; with a wrapMode it becomes several.
Item {
    id: item

    required property url symbol
    required property string text
    property color color: Theme.text
    property color symbolColor: Theme.secondaryText
    property alias font: label.font
    property int spacing: Theme.partSpacing
    property int symbolSize: Theme.symbolSize
    property bool isDirectional: false ///< the symbol points along the text
    property alias lineHeight: label.lineHeight
    property alias wrapMode: label.wrapMode

    Accessible.name: text
    Accessible.role: Accessible.StaticText
    implicitHeight: Math.max(symbolSize, label.implicitHeight)
    implicitWidth: Math.ceil(symbolSize + spacing + label.implicitWidth)

    Icon {
        color: item.symbolColor
        height: item.symbolSize
        source: item.symbol
        width: item.symbolSize
        x: Theme.isMirrored ? item.width - width : 0
        y: Math.round((firstLine.height - height) / 2 + label.y)

        transform: Scale {
            origin.x: item.symbolSize / 2
            xScale: item.isDirectional && Theme.isMirrored ? -1 : 1
        }
    }
    FontMetrics {
        id: firstLine

        font: label.font
    }
    PlainText {
        id: label

        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: item.symbolSize + item.spacing
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: item.color
        elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
        maximumLineCount: wrapMode === Text.NoWrap ? 1 : 100000
        text: item.text
    }
}
