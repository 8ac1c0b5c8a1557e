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

    /// What is being read or selected stays, wherever the list is scrolled to. Making it the current row would scroll.
    function hold(row: int) {
        const position = contentY;
        currentIndex = row;
        contentY = position;
    }

    /// Without a mouse: the one link of a message, or a menu of all that it has.
    function openLinks(row: MessageRow) {
        linkMenu.links = row.links();
        if (linkMenu.links.length === 1)
            Qt.openUrlExternally(linkMenu.links[0]);
        else if (linkMenu.links.length > 1)
            linkMenu.popupForKeys(row, 36, 24);
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

        onTextFocused: list.hold(index)
        onLinkPointedAt: text => list.pointedText = text
        onMenuRequested: text => {
            textMenu.text = text;
            textMenu.popup();
        }
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
    LinkMenu {
        id: linkMenu
    }
    TextMenu {
        id: textMenu
    }
    MessageNavigation {
        id: navigation

        isInterrupted: linkMenu.visible || textMenu.visible
        list: list

        onCopyRequested: row => list.messages.copy(row)
        onLinksRequested: row => list.openLinks(list.itemAtIndex(row) as MessageRow)
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
            if (navigation.held && navigation.held !== list) {
                navigation.release();
                list.focus = false; // somebody selected in a message, and goes on in the editor
            }
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
