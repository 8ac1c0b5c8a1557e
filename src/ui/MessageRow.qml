// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// One message: who wrote it, beside what was written. Thousands of them pass by while a chat is scrolled, so that a row
/// is made of little and can be used for one message after another.
Item {
    id: row

    required property int index
    required property bool isReply
    required property answerCard card
    required property bool hasCard
    required property list<toolEvent> toolEvents
    required property string tokenLine
    required property string imagePath

    property alias text: textView.content
    property alias isGrowing: textView.isGrowing
    readonly property bool isWaiting: textView.isEmpty && !hasCard
    readonly property real columnWidth: Math.min(width - 2 * Theme.listPadding, 740)
    readonly property real bodyInset: 24 + Theme.edgePadding // beyond the avatar's box
    readonly property real start: Math.round((width - columnWidth) / 2)

    /// What only screen readers hear as a whole.
    readonly property string said: !AccessibilityState.isActive ? "" : hasCard ? Array.from([card.title, card.summary, ...Array.from(card.keyPoints), ...Array.from(card.nextSteps)]).filter(each => each !== "").join("\n") : textView.plainText

    signal linkPointedAt(text: MessageTextView)
    signal menuRequested(text: MessageTextView)
    signal textFocused

    function links(): list<string> {
        return textView.links();
    }

    function deselect() {
        textView.deselect();
    }

    Accessible.focusable: true
    Accessible.name: said === "" ? author.text : qsTr("%1: %2").arg(author.text).arg(said)
    Accessible.role: Accessible.ListItem
    ListView.onPooled: deselect()
    implicitHeight: Math.max(avatar.height, author.height + (!textView.isEmpty ? textView.height + Theme.partSpacing : 0) + (parts.height > 0 ? parts.height + Theme.partSpacing : 0))

    FocusRing {
        anchors.bottomMargin: -8
        anchors.leftMargin: row.start - 8
        anchors.rightMargin: row.start - 8
        anchors.topMargin: -8
        isShown: row.activeFocus
        radius: Theme.cardRadius
    }
    Icon {
        id: avatar

        color: row.isReply ? Theme.accentSymbol : Theme.secondaryText
        height: Theme.avatarSize
        source: row.isReply ? Symbols.sparkles : Symbols.person
        width: Theme.avatarSize
        x: row.start + (Theme.isMirrored ? row.columnWidth - width - 1 : 1)
    }
    PlainText {
        id: author

        color: Theme.secondaryText
        font.bold: true
        font.pixelSize: Theme.captionSize
        text: row.isReply ? qsTr("Apple Foundation Model") : qsTr("You")
        x: row.start + (Theme.isMirrored ? row.columnWidth - row.bodyInset - width : row.bodyInset)
    }
    MessageTextView {
        id: textView

        visible: !textView.isEmpty
        width: row.columnWidth - row.bodyInset
        x: row.start + (Theme.isMirrored ? 0 : row.bodyInset)
        y: author.height + Theme.partSpacing

        onActiveFocusChanged: if (activeFocus)
            row.textFocused()
        onLinkHovered: row.linkPointedAt(textView)
        onMenuRequested: row.menuRequested(textView)
    }
    MessageParts {
        id: parts

        card: row.card
        hasCard: row.hasCard
        imagePath: row.imagePath
        isWaiting: row.isWaiting
        tokenLine: row.tokenLine
        toolEvents: row.toolEvents
        width: textView.width
        x: textView.x
        y: !textView.isEmpty ? textView.y + textView.height + Theme.partSpacing : textView.y
    }
}
