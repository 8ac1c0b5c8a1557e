// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// Where the next message is written and sent.
FocusScope {
    id: composer

    required property ChatStore store

    signal imageRequested

    function focusEditor() {
        editor.focusText();
    }

    implicitHeight: column.implicitHeight + 2 * Theme.panelPadding

    Rectangle {
        anchors.fill: parent
        color: Theme.fill
    }
    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.rowSpacing

        ModeRow {
            Layout.fillWidth: true
            store: composer.store
        }
        PendingImageRow {
            Layout.fillWidth: true
            store: composer.store
            visible: path !== ""
        }
        MessageEditor {
            id: editor

            Layout.fillWidth: true
            focus: true
            store: composer.store
        }
        ActionRow {
            Layout.fillWidth: true
            store: composer.store

            onImageRequested: composer.imageRequested()
        }
    }
    DropTarget {
        choose: locations => [PickableFiles.imageAmong(locations)].filter(location => location.toString() !== "")

        onChosen: locations => composer.store.attachImage(locations[0])
    }
}
