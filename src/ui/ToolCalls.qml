// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.lumora.ui

/// The tool calls of a reply, in call order.
Rectangle {
    id: block

    required property list<toolEvent> events
    required property real maximumWidth

    color: Theme.fill
    implicitHeight: column.implicitHeight + 2 * Theme.rowSpacing
    implicitWidth: column.implicitWidth + 16
    radius: Theme.rowRadius

    Column {
        id: column

        anchors.centerIn: parent
        spacing: Theme.lineSpacing

        Repeater {
            model: block.events

            delegate: ToolLine {
                anchors.left: column.left
                width: Math.min(implicitWidth, block.maximumWidth - 2 * Theme.rowSpacing)
            }
        }
    }
}
