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

    // What had the keyboard may be gone: a row that was removed, a button whose time is over.
    function keepFocus() {
        if (active && (!activeFocusItem?.visible || activeFocusItem === contentItem || activeFocusItem instanceof FocusScope))
            chat.focusEditor();
    }

    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Theme.isMirrored
    color: Theme.ground
    font.pixelSize: Theme.bodySize
    height: 800
    minimumHeight: 520
    minimumWidth: 760
    title: store.windowTitle
    visible: true
    width: 1080

    onActiveFocusItemChanged: focusKeeper.restart()

    SplitView {
        anchors.fill: parent

        handle: SplitHandle {
            onMoved: distance => window.sidebarWidth = Math.max(220, Math.min(window.sidebarWidth + (Theme.isMirrored ? -distance : distance), window.width - 380))
        }

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
    Connections {
        function onVisibleChanged() {
            focusKeeper.restart();
        }

        target: window.activeFocusItem
    }
    Timer {
        id: focusKeeper

        interval: 0

        onTriggered: window.keepFocus()
    }
    Announcer {
        store: window.store
    }
    Shortcut {
        sequence: "Ctrl+N"

        onActivated: {
            window.store.newConversation();
            chat.focusEditor();
        }
    }
    Shortcut {
        sequences: ["Ctrl+Q", "Ctrl+W"]

        onActivated: window.close()
    }
    Timer {
        interval: 10000
        repeat: true
        running: true

        onTriggered: window.store.refreshAvailability()
    }
}
