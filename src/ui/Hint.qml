// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// A tooltip.
T.ToolTip {
    id: hint

    bottomPadding: 5
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    delay: 700
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.min(contentWidth + leftPadding + rightPadding, 320)
    leftPadding: Theme.rowSpacing
    margins: 6
    rightPadding: Theme.rowSpacing
    timeout: 12000
    topPadding: 5
    x: Math.round((parent.width - implicitWidth) / 2)
    y: -implicitHeight - 5

    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.raisedGround
        radius: 6
    }
    contentItem: PlainText {
        Accessible.ignored: true
        font.pixelSize: Theme.captionSize
        text: hint.text
        wrapMode: Text.Wrap
    }
}
