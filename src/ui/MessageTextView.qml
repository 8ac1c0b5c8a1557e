// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// Text that a message holds, read as Markdown or as it stands. It can be selected; a link opens on a click.
TextEdit {
    id: edit

    // Aliases, since a long text that went through JavaScript would have it collect garbage all the time.
    property alias content: writer.text
    property alias isEmpty: writer.isEmpty
    property alias isVerbatim: writer.isVerbatim
    property alias isGrowing: writer.isGrowing
    readonly property string plainText: AccessibilityState.isActive ? writer.plainText : ""
    readonly property point pointerPosition: pointer.point.position

    signal menuRequested

    function links(): list<string> {
        return writer.links();
    }
    function copySelection() {
        writer.copy(selectionStart, selectionEnd);
    }

    Accessible.name: plainText
    Accessible.role: Accessible.StaticText
    activeFocusOnTab: false
    color: Theme.text
    font.pixelSize: Theme.bodySize
    readOnly: true
    selectByMouse: true
    selectedTextColor: Theme.text
    selectionColor: Theme.selection
    topPadding: -3 // lines are higher than their letters, at the top
    wrapMode: TextEdit.Wrap

    Component.onCompleted: writer.document = textDocument
    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy);
        if (event.accepted)
            copySelection();
    }
    onContentSizeChanged: writer.placeDecorations(width)
    onLinkActivated: link => Qt.openUrlExternally(link)
    onWidthChanged: writer.placeDecorations(width)

    HoverHandler {
        id: pointer

        cursorShape: edit.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor
    }
    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: edit.menuRequested()
    }
    MessageText {
        id: writer

        codeColor: Theme.hoverFill
        decoration: Component {
            TextDecoration {}
        }
        linkColor: Theme.accentSymbol
        quoteColor: Theme.secondaryText

        onWritten: placeDecorations(edit.width)
    }
}
