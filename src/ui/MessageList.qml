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
    property bool isPlacing: false
    property MessageTextView pointedText: null

    /// Goes by where the last message really ends; the list's own height is an estimate.
    function follow() {
        if (!isFollowing || isPlacing)
            return;
        isPlacing = true;
        if (!itemAtIndex(count - 1))
            positionViewAtEnd();
        const last = itemAtIndex(count - 1);
        if (last)
            contentY = Math.max(originY - topMargin, last.y + last.height + bottomMargin - height);
        isPlacing = false;
    }

    Accessible.name: qsTr("Messages")
    Accessible.role: Accessible.List
    Keys.forwardTo: [navigation]
    activeFocusOnTab: true
    bottomMargin: Theme.listPadding
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    currentIndex: -1
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    model: messages
    reuseItems: true
    spacing: Theme.sectionSpacing
    topMargin: Theme.listPadding

    ScrollBar.vertical: ThinScrollBar {
        onPressedChanged: list.isFollowing = false
    }
    delegate: MessageRow {
        width: list.width

        onLinkPointedAt: text => list.pointedText = text
    }

    onContentHeightChanged: follow()
    onHeightChanged: follow()
    onMovementStarted: isFollowing = false

    Hint {
        parent: list.pointedText ?? list
        text: list.pointedText?.hoveredLink ?? ""
        visible: text !== ""
        x: list.pointedText?.pointerPosition.x ?? 0
        y: (list.pointedText?.pointerPosition.y ?? 0) + 18
    }
    MessageNavigation {
        id: navigation

        list: list

        onCopyRequested: row => list.messages.copy(row)
        onScrolled: isAtEnd => list.isFollowing = isAtEnd
    }
    FocusRing {
        anchors.margins: 2
        isShown: list.Window.activeFocusItem === list
        parent: list
        radius: Theme.controlRadius
    }
    Connections {
        function onConversationAboutToChange() {
            const row = list.currentItem as MessageRow;
            if (row)
                row.deselect();
            list.currentIndex = -1;
        }
        function onEndChanged() {
            // What has just come on the screen is read from its start.
            list.isFollowing = list.visible;
            list.follow();
        }

        target: list.messages
    }
}
