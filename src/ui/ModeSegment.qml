// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// One response mode. The chosen one is in the Tab order; Left and Right go on to the next.
T.RadioButton {
    id: segment

    required property int index
    required property string modelData

    /// The user asks for the segment so many steps further on.
    signal moved(steps: int)

    Accessible.name: text
    Keys.onLeftPressed: moved(Theme.isMirrored ? 1 : -1)
    Keys.onRightPressed: moved(Theme.isMirrored ? -1 : 1)
    focusPolicy: checked || activeFocus ? Qt.TabFocus : Qt.NoFocus
    height: parent.height
    text: modelData

    Accessible.onPressAction: segment.clicked()

    background: Rectangle {
        border.color: Theme.hairline
        border.width: segment.checked ? 1 : 0
        color: segment.checked ? Theme.segment : segment.hovered ? Theme.fill : "transparent"
        radius: Theme.controlRadius - 2

        FocusRing {
            anchors.margins: 0
            isShown: segment.activeFocus
            radius: Theme.controlRadius - 2
        }
    }
    contentItem: PlainText {
        Accessible.ignored: true
        color: segment.checked ? Theme.text : Theme.secondaryText
        font.pixelSize: Theme.rowSize
        horizontalAlignment: Text.AlignHCenter
        text: segment.text
        verticalAlignment: Text.AlignVCenter
    }
}
