// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.lumora.ui

/// The links of a message, to be opened in the browser.
ContextMenu {
    id: menu

    property list<string> links

    implicitWidth: 320

    Repeater {
        model: menu.links

        delegate: ContextItem {
            required property string modelData

            text: modelData

            onTriggered: Qt.openUrlExternally(modelData)
        }
    }
}
