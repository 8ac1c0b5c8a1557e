// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The one window. It is on the screen at once, and shows the chats as soon as there is a store.
ApplicationWindow {
    id: window

    property ChatStore store: null
    property real sidebarWidth: 250
    readonly property bool isFilled: view.status === Loader.Ready
    property bool isNewChatWanted: false

    function startNewChat() {
        isNewChatWanted = !isFilled;
        if (isFilled)
            (view.item as MainView).startNewChat();
    }

    LayoutMirroring.childrenInherit: true
    LayoutMirroring.enabled: Theme.isMirrored
    color: Theme.ground
    font.pixelSize: Theme.bodySize
    height: 800
    minimumHeight: 520
    minimumWidth: 760
    title: (store?.windowTitle ?? "Lumora").replace(/\s+/g, " ")
    visible: true
    width: 1080

    onStoreChanged: view.setSource("MainView.qml", {
        store: store,
        window: window
    })

    Rectangle {
        color: Theme.sidebarGround
        height: parent.height
        width: Math.min(window.sidebarWidth, window.width - 380)
        x: Theme.isMirrored ? parent.width - width : 0
    }
    Loader {
        id: view

        anchors.fill: parent
        focus: true

        onLoaded: if (window.isNewChatWanted)
            window.startNewChat()
    }
}
