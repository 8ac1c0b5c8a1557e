// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.lumora.ui

/// Chooses how the next reply comes: one segment for each response mode.
Rectangle {
    id: control

    required property int style

    signal chosen(style: int)

    Accessible.name: qsTr("Response mode")
    Accessible.role: Accessible.Grouping
    color: Theme.fill
    implicitHeight: 28
    radius: Theme.controlRadius

    Row {
        id: row

        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            id: segments

            model: choices.labels

            delegate: ModeSegment {
                checked: control.style === index
                width: row.width / segments.count

                onClicked: control.chosen(index)
                onMoved: steps => {
                    const next = segments.itemAt(index + steps) as ModeSegment;
                    if (!next)
                        return;
                    control.chosen(next.index);
                    next.forceActiveFocus(Qt.TabFocusReason);
                }
            }
        }
    }
    ReplyStyleChoices {
        id: choices
    }
}
