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

    // The keyboard goes on to the next document, or to the button that adds one.
    function remove(document: var) {
        const hadFocus = list.activeFocus;
        library.remove(document);
        if (hadFocus && list.count === 0)
            addButton.forceActiveFocus();
    }

    implicitHeight: column.implicitHeight + 2 * Theme.groupSpacing

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.leftMargin: Theme.panelPadding
        anchors.right: parent.right
        anchors.rightMargin: Theme.panelPadding
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.panelSpacing

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
                id: addButton

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
            activeFocusOnTab: true
            Layout.preferredHeight: Math.min(contentHeight, panel.mostListHeight)
            ScrollBar.vertical: ThinScrollBar {}
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            highlightMoveDuration: 0
            model: DocumentListModel {
                library: panel.library
            }
            spacing: Theme.panelSpacing
            visible: count > 0

            delegate: DocumentRow {
                width: list.width

                onRemoved: panel.remove(document)
            }
        }
        PlainText {
            Layout.fillWidth: true
            color: Theme.tertiaryText
            font.pixelSize: Theme.smallCaptionSize
            text: qsTr("Add a document to ask questions about it.")
            visible: list.count === 0
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
    DropTarget {
        choose: locations => PickableFiles.documentsAmong(locations)

        onChosen: locations => locations.forEach(location => panel.library.add(location))
    }
}
