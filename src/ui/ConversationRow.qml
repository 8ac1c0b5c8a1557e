// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// One chat in the sidebar.
T.ItemDelegate {
    id: row

    required property int index
    required property string title
    required property var conversationID // a QUuid
    property bool isSelected: false
    property bool isCurrent: false

    signal menuRequested(x: real, y: real)

    Accessible.focusable: true
    Accessible.name: title
    Accessible.role: Accessible.ListItem
    Accessible.selected: isSelected
    focusPolicy: Qt.NoFocus
    implicitHeight: 34
    leftPadding: 18
    rightPadding: 18

    Accessible.onPressAction: row.clicked()

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: Theme.rowSpacing
            anchors.rightMargin: Theme.rowSpacing
            color: row.isSelected ? Theme.selectedRow : row.down ? Theme.pressedFill : row.hovered ? Theme.fill : "transparent"
            radius: Theme.rowRadius

            FocusRing {
                anchors.margins: 0
                isShown: row.isCurrent
                radius: Theme.rowRadius
            }
        }
    }
    contentItem: SymbolLabel {
        Accessible.ignored: true
        font.pixelSize: Theme.rowSize
        spacing: Theme.groupSpacing
        symbol: Symbols.bubble
        text: row.title
    }

    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: eventPoint => row.menuRequested(eventPoint.position.x, eventPoint.position.y)
    }
}
