// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// A small button with a title only.
T.Button {
    id: button

    focusPolicy: Qt.TabFocus
    implicitHeight: 26
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: 10
    rightPadding: 10

    background: Rectangle {
        border.color: Theme.hairline
        color: button.down ? Theme.pressedFill : button.hovered ? Theme.hoverFill : Theme.fill
        radius: Theme.rowRadius

        FocusRing {
            isShown: button.visualFocus
            radius: Theme.rowRadius + 2
        }
    }
    contentItem: PlainText {
        font.pixelSize: Theme.captionSize
        text: button.text
        verticalAlignment: Text.AlignVCenter
    }
}
