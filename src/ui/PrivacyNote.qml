// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// Where the messages stay, and how to break a line; shorter where the width does not hold it all.
Item {
    id: note

    readonly property string hint: qsTr("Private on this Mac. Shift+Return inserts a new line.")
    readonly property bool isWide: symbol.width + 6 + wideLabel.implicitWidth + 8 + newLine.implicitWidth <= width

    implicitHeight: Math.max(symbol.height, shortLabel.implicitHeight)

    Icon {
        id: symbol

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        height: Theme.symbolSize
        source: Symbols.lockshield
        width: Theme.symbolSize
    }
    PlainText {
        id: wideLabel

        Accessible.description: note.hint
        anchors.left: symbol.right
        anchors.leftMargin: Theme.partSpacing
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        text: qsTr("Private · On this Mac")
        visible: note.isWide
    }
    PlainText {
        id: newLine

        anchors.left: wideLabel.right
        anchors.leftMargin: Theme.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryText
        font.pixelSize: Theme.captionSize
        text: qsTr("Shift+Return for a new line")
        visible: note.isWide
    }
    PlainText {
        id: shortLabel

        Accessible.description: note.hint
        anchors.left: symbol.right
        anchors.leftMargin: Theme.partSpacing
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        text: qsTr("On-device")
        visible: !note.isWide
    }
    HoverHandler {
        id: pointer
    }
    Hint {
        text: note.hint
        visible: pointer.hovered
    }
}
