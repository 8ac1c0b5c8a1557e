// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// What the window shows: chats at the side, the selected chat beside them.
FocusScope {
    id: view

    required property ChatStore store
    required property Main window

    property ImagePicker imagePicker: null
    property DocumentPicker documentPicker: null

    // Made when it is first asked for: what a picker offers takes a while to find out.
    function pickImage() {
        if (!imagePicker)
            imagePicker = imagePickers.createObject(view) as ImagePicker;
        imagePicker.open();
    }
    function pickDocument() {
        if (!documentPicker)
            documentPicker = documentPickers.createObject(view) as DocumentPicker;
        documentPicker.open();
    }

    function startNewChat() {
        store.newConversation();
        chat.focusEditor();
    }

    // What had the keyboard may be gone: a row that was removed, a button whose time is over.
    function keepFocus() {
        const item = window.activeFocusItem;
        const isPicking = imagePicker?.visible || documentPicker?.visible; // some pickers are part of the window
        if (!isPicking && window.active && (!item?.visible || item === window.contentItem || item instanceof FocusScope))
            chat.focusEditor();
    }

    focus: true

    SplitView {
        id: columns

        anchors.fill: parent

        handle: SplitHandle {
            onMoved: distance => view.window.sidebarWidth = Math.max(220, Math.min(view.window.sidebarWidth + (Theme.isMirrored ? -distance : distance), view.width - 380))
        }

        // It does not mirror by itself.
        Component.onCompleted: if (Theme.isMirrored)
            columns.moveItem(0, 1)
        onResizingChanged: view.window.sidebarWidth = sidebar.width

        Sidebar {
            id: sidebar

            SplitView.minimumWidth: 220
            SplitView.preferredWidth: Math.min(view.window.sidebarWidth, view.width - 380)
            store: view.store

            onDocumentRequested: view.pickDocument()
        }
        ChatView {
            id: chat

            SplitView.fillWidth: true
            SplitView.minimumWidth: 360
            focus: true
            store: view.store

            onImageRequested: view.pickImage()
        }
    }
    Component {
        id: imagePickers

        ImagePicker {
            onPicked: location => view.store.attachImage(location)
        }
    }
    Component {
        id: documentPickers

        DocumentPicker {
            onPicked: location => view.store.library.add(location)
        }
    }
    Connections {
        function onActiveFocusItemChanged() {
            focusKeeper.restart();
        }

        target: view.window
    }
    Connections {
        function onVisibleChanged() {
            focusKeeper.restart();
        }

        target: view.window.activeFocusItem
    }
    Timer {
        id: focusKeeper

        interval: 0

        onTriggered: view.keepFocus()
    }
    Announcer {
        store: view.store
    }
    Shortcut {
        sequence: "Ctrl+N"

        onActivated: view.startNewChat()
    }
    Shortcut {
        sequences: ["Ctrl+Q", "Ctrl+W"]

        onActivated: view.window.close()
    }
    Timer {
        interval: 10000
        repeat: true
        running: true

        onTriggered: view.store.refreshAvailability()
    }
}
