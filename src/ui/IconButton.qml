// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// A button that is only a symbol. Its text is what it is called.
BaseButton {
    id: button

    required property url symbol
    property string hint: text
    property int symbolSize: Theme.symbolSize
    property color color: Theme.secondaryText

    description: hint === text ? "" : hint
    implicitHeight: 28
    implicitWidth: 28

    background: Rectangle {
        color: button.down ? Theme.pressedFill : button.hovered ? Theme.hoverFill : "transparent"
        radius: Theme.rowRadius

        FocusRing {
            anchors.margins: 0 // lists cut what is outside
            isShown: button.activeFocus
            radius: Theme.rowRadius
        }
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            color: button.hovered ? Theme.text : button.color
            height: button.symbolSize
            source: button.symbol
            width: button.symbolSize
        }
    }

    Hint {
        text: button.hint
        visible: button.hovered
    }
}
