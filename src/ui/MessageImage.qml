// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// An image file, at most 260 by 170, or a word that it cannot be shown.
Item {
    id: view

    required property string path

    readonly property Item shown: image.isUnavailable ? note : image

    implicitHeight: shown.implicitHeight
    implicitWidth: shown.implicitWidth

    RoundedImage {
        id: image

        Accessible.name: qsTr("Attached image")
        Accessible.role: Accessible.Graphic
        anchors.fill: parent
        box: Qt.size(260, 170)
        path: view.path
        radius: Theme.imageRadius
        visible: !isUnavailable
    }
    SymbolLabel {
        id: note

        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        symbol: Symbols.imagemissing
        text: qsTr("Image unavailable")
        visible: image.isUnavailable
    }
}
