// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The chats. The arrow keys, Home and End move; Return or Space selects; the menu key opens what can be done with a chat,
/// and so does Delete.
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
    highlightMoveDuration: 0
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
        const row = currentItem as ConversationRow;
        if (!row)
            return;
        const page = Math.max(1, Math.floor(height / (row.height + spacing)) - 1);
        const moves = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page], [Qt.Key_PageDown, page]]);
        const opensMenu = [Qt.Key_Menu, Qt.Key_Delete].includes(event.key) || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier);
        event.accepted = true;
        if (moves.has(event.key))
            currentIndex = Math.max(0, Math.min(count - 1, currentIndex + moves.get(event.key)));
        else if (opensMenu) {
            menu.conversationID = row.conversationID;
            menu.popupForKeys(row, 24, row.height);
        } else if ([Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key))
            row.clicked();
        else
            event.accepted = false;
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
