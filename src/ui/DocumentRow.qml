// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// One imported document. Its button has the keyboard where the row is the list's current one.
FocusScope {
    id: row

    required property importedDocument document

    signal removed

    Accessible.name: document.name
    Accessible.role: Accessible.ListItem
    implicitHeight: button.implicitHeight

    RowLayout {
        anchors.fill: parent
        spacing: Theme.lineSpacing

        SymbolLabel {
            Accessible.ignored: true
            Layout.fillWidth: true
            font.pixelSize: Theme.captionSize
            symbol: Symbols.document
            text: row.document.name
        }
        IconButton {
            id: button

            focus: true
            focusPolicy: Qt.NoFocus // the list is one stop
            implicitHeight: 22
            implicitWidth: 22
            symbol: Symbols.xmark
            text: qsTr("Remove %1").arg(row.document.name)

            Keys.onDeletePressed: row.removed()
            onClicked: row.removed()
        }
    }
}
