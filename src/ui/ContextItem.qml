// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// A menu entry.
T.MenuItem {
    id: item

    property color color: Theme.text
    property color highlight: Theme.hoverFill

    Accessible.name: text
    Accessible.role: Accessible.MenuItem
    implicitHeight: 28
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.rowSpacing
    rightPadding: Theme.rowSpacing

    Accessible.onPressAction: {
        item.triggered();
        item.menu.dismiss();
    }

    background: Rectangle {
        color: item.highlighted ? item.highlight : "transparent"
        radius: 5
    }
    contentItem: PlainText {
        Accessible.ignored: true
        color: item.enabled ? item.color : Theme.tertiaryText
        elide: Text.ElideMiddle
        font.pixelSize: Theme.rowSize
        text: item.text
        verticalAlignment: Text.AlignVCenter
    }
}
