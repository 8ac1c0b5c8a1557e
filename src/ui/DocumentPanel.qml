// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import org.lumora.ui

/// The documents that the model can search.
Item {
    id: panel

    required property DocumentLibrary library
    property real mostListHeight: 150

    signal documentRequested

    implicitHeight: column.implicitHeight + 20

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 7

        RowLayout {
            SectionHeading {
                Layout.fillWidth: true
                text: qsTr("Documents")
            }
            Spinner {
                label: qsTr("Importing a document")
                visible: panel.library.isImporting
            }
            IconButton {
                hint: qsTr("Add a text, Markdown, or PDF document for local search")
                symbol: Symbols.plus
                text: qsTr("Add Document")

                onClicked: panel.documentRequested()
            }
        }
        ListView {
            id: list

            Accessible.name: qsTr("Documents")
            Accessible.role: Accessible.List
            Layout.fillWidth: true
            Layout.preferredHeight: Math.min(contentHeight, panel.mostListHeight)
            ScrollBar.vertical: ThinScrollBar {}
            boundsBehavior: Flickable.StopAtBounds
            cacheBuffer: 100000 // all rows are there for the keyboard
            clip: true
            model: panel.library.documents
            spacing: 7
            visible: count > 0

            delegate: DocumentRow {
                width: list.width

                onReached: list.positionViewAtIndex(index, ListView.Contain)
                onRemoved: panel.library.remove(modelData)
            }
        }
        PlainText {
            Layout.fillWidth: true
            color: Theme.tertiaryText
            font.pixelSize: Theme.smallCaptionSize
            text: qsTr("Add a document to ask questions about it.")
            visible: panel.library.documents.length === 0
            wrapMode: Text.Wrap
        }
        PlainText {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            color: Theme.failure
            font.pixelSize: Theme.smallCaptionSize
            text: panel.library.errorMessage
            visible: text !== ""
            wrapMode: Text.Wrap
        }
    }
}
