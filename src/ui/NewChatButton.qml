// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

BaseButton {
    id: button

    bottomPadding: Theme.buttonPadding
    description: qsTr("Start a new chat (⌘N)")
    implicitHeight: 40
    leftPadding: Theme.edgePadding
    rightPadding: Theme.edgePadding
    text: qsTr("New chat")
    topPadding: Theme.buttonPadding

    background: Rectangle {
        color: button.down ? Theme.pressedFill : button.hovered ? Theme.hoverFill : Theme.fill
        radius: Theme.buttonRadius

        FocusRing {
            isShown: button.activeFocus
            radius: Theme.buttonRadius + 2
        }
    }
    contentItem: SymbolLabel {
        Accessible.ignored: true
        font.pixelSize: Theme.bodySize
        spacing: Theme.rowSpacing
        symbol: Symbols.newchat
        symbolSize: 18
        text: button.text
    }

    Hint {
        text: button.description
        visible: button.hovered
    }
}
