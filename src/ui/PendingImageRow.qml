// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// The image that the next message carries.
RowLayout {
    id: row

    required property ChatStore store

    readonly property string path: store.pendingImagePath

    spacing: Theme.rowSpacing

    MessageImage {
        path: row.path
    }
    PlainText {
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
        color: Theme.secondaryText
        elide: Text.ElideMiddle
        font.pixelSize: Theme.captionSize
        text: row.path.slice(row.path.lastIndexOf("/") + 1)
    }
    IconButton {
        symbol: Symbols.xmarkcircle
        text: qsTr("Remove image")

        onClicked: row.store.removePendingImage()
    }
    Item {
        Layout.fillWidth: true
    }
}
