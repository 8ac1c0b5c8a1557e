// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// What can be done with the selection of a text.
ContextMenu {
    id: menu

    property TextEdit text: null

    readonly property bool isEditable: text !== null && !text.readOnly
    readonly property bool hasSelection: text !== null && text.selectedText !== ""

    ContextItem {
        enabled: menu.isEditable && menu.hasSelection
        text: qsTr("Cut")

        onTriggered: menu.text.cut()
    }
    ContextItem {
        enabled: menu.hasSelection
        text: qsTr("Copy")

        onTriggered: {
            const message = menu.text as MessageTextView;
            if (message)
                message.copySelection();
            else
                menu.text.copy();
        }
    }
    ContextItem {
        enabled: menu.isEditable
        text: qsTr("Paste")

        onTriggered: menu.text.paste()
    }
    ContextItem {
        enabled: menu.text !== null && menu.text.length > 0
        text: qsTr("Select All")

        onTriggered: menu.text.selectAll()
    }
}
