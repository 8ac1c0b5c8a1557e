// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The messages of a chat, oldest first. Every new message and every new piece of a reply brings its end into view.
ListView {
    id: list

    required property MessageListModel messages

    /// The end stays in view until the user moves away from it.
    property bool isFollowing: false

    function follow() {
        if (isFollowing)
            contentY = Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
    }

    Accessible.name: qsTr("Messages")
    Accessible.role: Accessible.List
    bottomMargin: 24
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    model: messages
    spacing: 20
    topMargin: 24

    ScrollBar.vertical: ThinScrollBar {
        onPressedChanged: list.isFollowing = false
    }
    delegate: MessageRow {
        width: list.width
    }

    onContentHeightChanged: follow()
    onHeightChanged: follow()
    onMovementStarted: isFollowing = false
    onOriginYChanged: follow()

    Connections {
        function onEndChanged() {
            // What has just come on the screen is read from its start.
            list.isFollowing = list.visible;
            if (list.isFollowing)
                list.positionViewAtEnd();
            list.follow();
        }

        target: list.messages
    }
}
