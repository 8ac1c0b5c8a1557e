// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// The hairline between two columns; it can be caught a few pixels to either side.
Rectangle {
    id: handle

    color: T.SplitHandle.pressed ? Theme.accent : Theme.hairline
    implicitWidth: 1

    containmentMask: Item {
        height: handle.height
        width: 9
        x: -4
    }
}
