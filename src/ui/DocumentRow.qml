// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// One imported document.
RowLayout {
    id: row

    required property int index
    required property importedDocument document

    readonly property bool isFocused: button.activeFocus

    signal reached ///< by the keyboard
    signal removed

    function focusButton() {
        button.forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: 4

    SymbolLabel {
        Layout.fillWidth: true
        font.pixelSize: Theme.captionSize
        symbol: Symbols.document
        text: row.document.name
    }
    IconButton {
        id: button

        implicitHeight: 22
        implicitWidth: 22
        symbol: Symbols.xmark
        text: qsTr("Remove %1").arg(row.document.name)

        onClicked: row.removed()
        onVisualFocusChanged: {
            if (visualFocus)
                row.reached();
        }
    }
}
