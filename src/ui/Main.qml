// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The one window: chats at the side, the selected chat beside them.
ApplicationWindow {
    id: window

    required property ChatStore store
    property real sidebarWidth: 250

    color: Theme.ground
    font.pixelSize: Theme.bodySize
    height: 800
    minimumHeight: 520
    minimumWidth: 760
    title: store.windowTitle
    visible: true
    width: 1080

    SplitView {
        anchors.fill: parent

        handle: SplitHandle {}

        onResizingChanged: window.sidebarWidth = sidebar.width

        Sidebar {
            id: sidebar

            SplitView.minimumWidth: 220
            SplitView.preferredWidth: window.sidebarWidth
            store: window.store

            onDocumentRequested: documentPicker.open()
        }
        ChatView {
            id: chat

            SplitView.fillWidth: true
            SplitView.minimumWidth: 360
            focus: true
            store: window.store

            onImageRequested: imagePicker.open()
        }
    }
    ImagePicker {
        id: imagePicker

        onPicked: location => window.store.attachImage(location)
    }
    DocumentPicker {
        id: documentPicker

        onPicked: location => window.store.library.add(location)
    }
    Shortcut {
        sequence: "Ctrl+N"

        onActivated: {
            window.store.newConversation();
            chat.focusEditor();
        }
    }
    Timer {
        interval: 10000
        repeat: true
        running: true

        onTriggered: window.store.refreshAvailability()
    }
}
