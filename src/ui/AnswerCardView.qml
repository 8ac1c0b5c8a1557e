// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// A structured answer.
Rectangle {
    id: view

    required property answerCard card

    color: Theme.fill
    implicitHeight: column.implicitHeight + 2 * Theme.panelPadding
    radius: Theme.cardRadius

    Column {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.groupSpacing

        PlainText {
            Accessible.role: Accessible.Heading
            font.pixelSize: Theme.headlineSize
            font.weight: Font.DemiBold
            horizontalAlignment: undefined // as its own language is written
            text: view.card.title
            width: parent.width
            wrapMode: Text.Wrap
        }
        MessageTextView {
            content: view.card.summary
            isGrowing: false
            isVerbatim: true
            width: parent.width
        }
        CardSection {
            heading: qsTr("Key points")
            lines: view.card.keyPoints
            symbol: Symbols.checkcircle
            width: parent.width
        }
        CardSection {
            heading: qsTr("Next steps")
            isDirectional: true
            lines: view.card.nextSteps
            symbol: Symbols.arrowcircle
            width: parent.width
        }
    }
}
