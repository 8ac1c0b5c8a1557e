// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// The selected chat: what stands in its way, its messages, the composer.
FocusScope {
    id: view

    required property ChatStore store

    signal imageRequested

    function focusEditor() {
        composer.focusEditor();
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        AvailabilityBanner {
            Layout.fillWidth: true
            store: view.store
            visible: view.store.availabilityMessage !== ""
        }
        ErrorBanner {
            Layout.fillWidth: true
            message: view.store.errorMessage
            visible: message !== ""
        }
        MessageList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            messages: MessageListModel {
                store: view.store
            }
            visible: messages.count > 0
        }
        EmptyState {
            Layout.fillHeight: true
            Layout.fillWidth: true
            visible: !list.visible
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.hairline
        }
        Composer {
            id: composer

            Layout.fillWidth: true
            focus: true
            store: view.store

            onImageRequested: view.imageRequested()
        }
    }
}
