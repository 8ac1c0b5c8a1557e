// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// What can be done with the draft, or with the reply that is being generated.
RowLayout {
    id: row

    required property ChatStore store

    signal imageRequested

    // What an input method still composes belongs to the message.
    function send() {
        Qt.inputMethod.commit(); // qmllint disable
        store.send();
    }

    spacing: Theme.rowSpacing

    IconButton {
        Layout.leftMargin: -6
        hint: qsTr("Attach an image")
        symbol: Symbols.paperclip
        symbolSize: 18
        text: qsTr("Attach Image")

        onClicked: row.imageRequested()
    }
    PrivacyNote {
        Layout.fillWidth: true
    }
    ActionButton {
        id: send

        Layout.preferredWidth: Math.max(implicitWidth, stop.implicitWidth)
        enabled: row.store.canSend
        highlighted: true
        symbol: Symbols.arrowup
        text: qsTr("Send")
        visible: !row.store.isGenerating

        onClicked: row.send()

        Shortcut {
            enabled: row.store.canSend
            sequences: ["Ctrl+Return", "Ctrl+Enter"]

            onActivated: row.send()
        }
    }
    ActionButton {
        id: stop

        Layout.preferredWidth: Math.max(implicitWidth, send.implicitWidth)
        symbol: Symbols.stop
        text: qsTr("Stop")
        visible: row.store.isGenerating

        onClicked: row.store.stopGenerating()
    }
}
