// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// What stands beside the avatar; what a message does not have is absent.
Column {
    id: body

    required property string author
    required property string text
    required property bool hasCard
    required property answerCard card
    required property list<toolEvent> toolEvents
    required property string tokenLine
    required property string imagePath

    spacing: 6

    PlainText {
        color: Theme.secondaryText
        font.bold: true
        font.pixelSize: Theme.captionSize
        text: body.author
    }
    MessageTextView {
        content: body.text
        visible: content !== ""
        width: parent.width
    }
    Spinner {
        label: qsTr("Waiting for the reply")
        visible: body.text === "" && !body.hasCard
    }
    AnswerCardView {
        card: body.card
        visible: body.hasCard
        width: parent.width
    }
    ToolCalls {
        events: body.toolEvents
        maximumWidth: body.width
        visible: events.length > 0
    }
    PlainText {
        color: Theme.tertiaryText
        font.pixelSize: Theme.smallCaptionSize
        text: body.tokenLine
        visible: text !== ""
    }
    MessageImage {
        path: body.imagePath
        visible: path !== ""
    }
}
