// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

T.ScrollBar {
    id: bar

    Accessible.ignored: true // what it scrolls, the keyboard scrolls as well
    implicitWidth: 10
    minimumSize: Math.min(1, 24 / Math.max(1, height))
    padding: 2
    policy: T.ScrollBar.AsNeeded
    visible: size < 1

    contentItem: Rectangle {
        color: bar.pressed ? Theme.tint(0.4) : bar.hovered ? Theme.tint(0.32) : Theme.tint(0.18)
        implicitWidth: 6
        radius: 3
    }
}
