// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// Whether the model can be used, in one line.
Item {
    id: footer

    required property bool isReady

    Accessible.name: label.text
    Accessible.role: Accessible.StatusBar
    implicitHeight: label.implicitHeight + 2 * Theme.panelPadding

    Rectangle {
        id: dot

        anchors.left: parent.left
        anchors.leftMargin: Theme.panelPadding
        anchors.verticalCenter: parent.verticalCenter
        color: footer.isReady ? Theme.ready : Theme.warning
        height: 7
        radius: 3.5
        width: 7
    }
    PlainText {
        id: label

        Accessible.ignored: true
        anchors.left: dot.right
        anchors.leftMargin: Theme.panelSpacing
        anchors.right: parent.right
        anchors.rightMargin: Theme.panelPadding
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        elide: Text.ElideRight
        font.pixelSize: Theme.captionSize
        text: footer.isReady ? qsTr("On-device model ready") : qsTr("Model unavailable")
    }
}
