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
            Layout.leftMargin: Theme.sidebarPadding
            Layout.rightMargin: Theme.sidebarPadding
            Layout.topMargin: 18
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
            text: qsTr("Lumora")
        }
        NewChatButton {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.groupSpacing
            Layout.rightMargin: Theme.groupSpacing

            onClicked: sidebar.store.newConversation()
        }
        SectionHeading {
            Layout.bottomMargin: Theme.partSpacing
            Layout.leftMargin: Theme.sidebarPadding
            Layout.rightMargin: Theme.sidebarPadding
            Layout.topMargin: Theme.sectionSpacing
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
