// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// A small button with a title only.
BaseButton {
    id: button

    implicitHeight: 26
    leftPadding: Theme.buttonPadding
    rightPadding: Theme.buttonPadding

    background: Rectangle {
        border.color: Theme.hairline
        color: button.down ? Theme.pressedFill : button.hovered ? Theme.hoverFill : Theme.fill
        radius: Theme.rowRadius

        FocusRing {
            isShown: button.activeFocus
            radius: Theme.rowRadius + 2
        }
    }
    contentItem: PlainText {
        Accessible.ignored: true
        font.pixelSize: Theme.captionSize
        text: button.text
        verticalAlignment: Text.AlignVCenter
    }
}
