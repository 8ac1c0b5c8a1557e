// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

T.Menu {
    id: menu

    /// With its first entry chosen.
    function popupForKeys(parent: Item, x: real, y: real) {
        popup(parent, x, y);
        currentIndex = 0;
    }

    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: 180
    margins: 4
    padding: 5

    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.raisedGround
        radius: Theme.controlRadius
    }
    contentItem: ListView {
        currentIndex: menu.currentIndex
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
    }
}
