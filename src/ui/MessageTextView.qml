// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// Text that a message holds, with its inline styles or as it stands. It can be selected; a link opens on a click.
TextEdit {
    id: edit

    required property string content
    property bool isVerbatim: false

    Accessible.name: content
    Accessible.role: Accessible.StaticText
    activeFocusOnTab: false
    color: Theme.text
    font.pixelSize: Theme.bodySize
    readOnly: true
    selectByMouse: true
    selectedTextColor: Theme.text
    selectionColor: Theme.selection
    textFormat: TextEdit.RichText
    wrapMode: TextEdit.Wrap

    Component.onCompleted: writer.document = textDocument
    onLinkActivated: link => Qt.openUrlExternally(link)

    HoverHandler {
        id: pointer

        cursorShape: edit.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor
    }
    Hint {
        text: edit.hoveredLink
        visible: text !== ""
        x: pointer.point.position.x
        y: pointer.point.position.y + 18
    }
    MessageText {
        id: writer

        codeColor: Theme.hoverFill
        isVerbatim: edit.isVerbatim
        linkColor: Theme.accentSymbol
        text: edit.content
    }
}
