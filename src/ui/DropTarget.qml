// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// Takes files that are dropped, and shows while they are dragged over it that it would.
DropArea {
    id: area

    /// Which of these files are taken: a function from a list of locations to a list of locations.
    required property var choose

    signal chosen(locations: var)

    property bool isWilling: false

    anchors.fill: parent
    keys: ["text/uri-list"]

    onDropped: drop => {
        const files = area.choose(drop.urls);
        drop.accepted = files.length > 0;
        if (drop.accepted)
            area.chosen(files);
        area.isWilling = false;
    }
    onEntered: drag => {
        area.isWilling = area.choose(drag.urls).length > 0;
        drag.accepted = area.isWilling;
    }
    onExited: area.isWilling = false

    Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        border.color: Theme.accentSymbol
        border.width: 2
        color: Qt.alpha(Theme.accent, 0.08)
        radius: Theme.controlRadius
        visible: area.isWilling
    }
}
