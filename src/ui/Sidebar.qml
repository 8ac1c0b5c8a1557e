// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// The side column: a new chat, the chats, the documents, the model's state.
Rectangle {
    id: sidebar

    required property ChatStore store

    signal documentRequested

    color: Theme.sidebarGround

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PlainText {
            Layout.bottomMargin: 18
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 18
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
            text: qsTr("Lumora")
        }
        NewChatButton {
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10

            onClicked: sidebar.store.newConversation()
        }
        SectionHeading {
            Layout.bottomMargin: 6
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 20
            text: qsTr("Chats")
        }
        ConversationList {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.minimumHeight: 80
            store: sidebar.store
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.hairline
        }
        DocumentPanel {
            Layout.fillWidth: true
            library: sidebar.store.library

            onDocumentRequested: sidebar.documentRequested()
        }
        StatusFooter {
            Layout.fillWidth: true
            isReady: sidebar.store.availabilityMessage === ""
        }
    }
}
