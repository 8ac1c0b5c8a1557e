// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// The hairline between two columns; it can be caught a few pixels to either side, and moved by the arrow keys.
Rectangle {
    id: handle

    signal moved(distance: real) ///< in logical pixels, to the right

    Accessible.description: qsTr("The left and right arrow keys change it.")
    Accessible.name: qsTr("Sidebar width")
    Accessible.role: Accessible.Splitter
    Keys.onLeftPressed: moved(-10)
    Keys.onRightPressed: moved(10)
    activeFocusOnTab: true
    color: T.SplitHandle.pressed || activeFocus ? Theme.accent : Theme.hairline
    implicitWidth: 1

    containmentMask: Item {
        height: handle.height
        width: 9
        x: -4
    }
}
