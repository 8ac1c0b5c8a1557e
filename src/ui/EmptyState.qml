// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// Stands where a chat has no messages yet.
Item {
    Column {
        anchors.centerIn: parent
        spacing: Theme.panelPadding
        width: Math.min(parent.width - 60, 430)

        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Theme.accentSymbol
            height: 52
            source: Symbols.stack
            weight: 1
            width: 52
        }
        PlainText {
            Accessible.role: Accessible.Heading
            font.bold: true
            font.pixelSize: Theme.titleSize
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Explore Apple’s on-device model")
            width: parent.width
            wrapMode: Text.Wrap
        }
        PlainText {
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.2
            text: qsTr("Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.")
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
