// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// The documents that the model can search.
Item {
    id: panel

    required property DocumentLibrary library

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
            IconButton {
                hint: qsTr("Add a text, Markdown, or PDF document for local search")
                symbol: Symbols.plus
                text: qsTr("Add Document")

                onClicked: panel.documentRequested()
            }
        }
        Repeater {
            model: panel.library.documents

            delegate: DocumentRow {
                Layout.fillWidth: true

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
            Layout.fillWidth: true
            color: Theme.failure
            font.pixelSize: Theme.smallCaptionSize
            text: panel.library.errorMessage
            visible: text !== ""
            wrapMode: Text.Wrap
        }
    }
}
