// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The chats. Up and Down move, Return or Space selects, the menu key opens what can be done with a chat.
ListView {
    id: list

    required property ChatStore store

    Accessible.name: qsTr("Chats")
    Accessible.role: Accessible.List
    ScrollBar.vertical: ThinScrollBar {}
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    currentIndex: conversations.selectedRow
    spacing: 2

    delegate: ConversationRow {
        id: row

        isCurrent: list.activeFocus && ListView.isCurrentItem
        isSelected: index === conversations.selectedRow
        width: list.width

        onClicked: list.store.selectConversation(conversationID)
        onMenuRequested: (x, y) => {
            menu.conversationID = conversationID;
            menu.popup(row, x, y);
        }
    }
    model: ConversationListModel {
        id: conversations

        store: list.store

        onSelectedRowChanged: list.currentIndex = selectedRow
    }

    Keys.onPressed: event => {
        const opensMenu = event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier);
        const current = currentItem as ConversationRow;
        if (!current)
            return;
        if (opensMenu)
            current.menuRequested(24, current.height);
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
            current.clicked();
        else
            return;
        event.accepted = true;
    }

    ContextMenu {
        id: menu

        property var conversationID

        DestructiveItem {
            text: qsTr("Delete Chat")

            onTriggered: list.store.deleteConversation(menu.conversationID)
        }
    }
}
