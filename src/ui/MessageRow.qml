// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// One message: who wrote it, beside what was written.
Item {
    id: row

    required property bool isReply
    required property string text
    required property answerCard card
    required property bool hasCard
    required property list<toolEvent> toolEvents
    required property string tokenLine
    required property string imagePath

    readonly property real columnWidth: Math.min(width, 740) - 48

    Accessible.name: body.author
    Accessible.role: Accessible.ListItem
    implicitHeight: Math.max(body.implicitHeight, avatar.height)

    Icon {
        id: avatar

        color: row.isReply ? Theme.accentSymbol : Theme.secondaryText
        height: Theme.avatarSize
        source: row.isReply ? Symbols.sparkles : Symbols.person
        width: Theme.avatarSize
        x: Math.round((row.width - row.columnWidth) / 2) + 1
    }
    MessageBody {
        id: body

        author: row.isReply ? qsTr("Apple Foundation Model") : qsTr("You")
        card: row.card
        hasCard: row.hasCard
        imagePath: row.imagePath
        text: row.text
        tokenLine: row.tokenLine
        toolEvents: row.toolEvents
        width: row.columnWidth - 36
        x: avatar.x + 35
    }
}
