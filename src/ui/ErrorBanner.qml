// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// The store's error line.
Rectangle {
    id: banner

    required property string message

    color: Theme.failureGround
    implicitHeight: row.implicitHeight + 2 * Theme.edgePadding

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.margins: Theme.edgePadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.bannerSpacing

        Icon {
            Layout.alignment: Qt.AlignTop
            Layout.preferredHeight: 18
            Layout.preferredWidth: 18
            color: Theme.failure
            source: Symbols.exclamation
        }
        PlainText {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            font.pixelSize: Theme.rowSize
            text: banner.message
            wrapMode: Text.Wrap
        }
    }
}
