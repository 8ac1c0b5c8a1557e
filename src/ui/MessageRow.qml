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
    readonly property real columnWidth: Math.min(width, 740) - 48

    signal linkPointedAt(text: MessageTextView)

    function deselect() {
        textView.deselect();
    }

    Accessible.name: author.text
    Accessible.role: Accessible.ListItem
    ListView.onPooled: deselect()
    implicitHeight: Math.max(avatar.height, author.height + (!textView.isEmpty ? textView.height + 6 : 0) + (parts.height > 0 ? parts.height + 6 : 0))

    Icon {
        id: avatar

        color: row.isReply ? Theme.accentSymbol : Theme.secondaryText
        height: Theme.avatarSize
        source: row.isReply ? Symbols.sparkles : Symbols.person
        width: Theme.avatarSize
        x: Math.round((row.width - row.columnWidth) / 2) + 1
    }
    PlainText {
        id: author

        color: Theme.secondaryText
        font.bold: true
        font.pixelSize: Theme.captionSize
        text: row.isReply ? qsTr("Apple Foundation Model") : qsTr("You")
        x: avatar.x + 35
    }
    MessageTextView {
        id: textView

        visible: !textView.isEmpty
        width: row.columnWidth - 36
        x: author.x
        y: author.height + 6

        // What is being read or selected stays, wherever the list is scrolled to.
        onActiveFocusChanged: if (activeFocus)
            row.ListView.view.currentIndex = row.index
        onLinkHovered: row.linkPointedAt(textView)
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
        x: author.x
        y: !textView.isEmpty ? textView.y + textView.height + 6 : textView.y
    }
}
