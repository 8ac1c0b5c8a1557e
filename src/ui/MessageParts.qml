// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.lumora.ui

/// What a message has beside its text. Most messages have little of it, so each part is made where it is there.
Column {
    id: parts

    required property bool isWaiting
    required property bool hasCard
    required property answerCard card
    required property list<toolEvent> toolEvents
    required property string tokenLine
    required property string imagePath

    spacing: Theme.partSpacing

    LazyPart {
        isNeeded: parts.isWaiting

        delegate: Spinner {
            anchors.left: parts.left
            label: qsTr("Waiting for the reply")
            visible: parts.isWaiting
        }
    }
    LazyPart {
        isNeeded: parts.hasCard

        delegate: AnswerCardView {
            card: parts.card
            visible: parts.hasCard
            width: parts.width
        }
    }
    LazyPart {
        isNeeded: parts.toolEvents.length > 0

        delegate: ToolCalls {
            anchors.left: parts.left
            events: parts.toolEvents
            maximumWidth: parts.width
            visible: events.length > 0
        }
    }
    LazyPart {
        isNeeded: parts.tokenLine !== ""

        delegate: PlainText {
            anchors.left: parts.left
            color: Theme.tertiaryText
            font.pixelSize: Theme.smallCaptionSize
            text: parts.tokenLine
            visible: text !== ""
        }
    }
    LazyPart {
        isNeeded: parts.imagePath !== ""

        delegate: MessageImage {
            anchors.left: parts.left
            path: parts.imagePath
            visible: path !== ""
        }
    }
}
