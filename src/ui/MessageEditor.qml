// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls.Basic
import org.lumora.ui

/// The editor of the draft. Return sends, Shift+Return breaks the line.
ScrollView {
    id: editor

    required property ChatStore store

    function focusText() {
        area.forceActiveFocus();
    }
    function handleReturn(event: var) {
        event.accepted = !(event.modifiers & Qt.ShiftModifier);
        if (!event.accepted)
            return;
        if (area.inputMethodComposing)
            Qt.inputMethod.commit();
        else if (store.canSend)
            store.send();
    }

    ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
    ScrollBar.vertical: ThinScrollBar {
        height: editor.height
        x: Theme.isMirrored ? 0 : editor.width - width
    }
    contentWidth: availableWidth
    implicitHeight: Math.min(Math.max(area.implicitHeight, 65), 120)

    TextArea {
        id: area

        Accessible.multiLine: true
        Accessible.name: qsTr("Message")
        Keys.onEnterPressed: event => editor.handleReturn(event)
        Keys.onReturnPressed: event => editor.handleReturn(event)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        Keys.onTabPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
        background: null
        color: Theme.text
        focus: true
        font.pixelSize: Theme.bodySize
        leftPadding: Theme.isMirrored ? 12 : 0
        rightPadding: Theme.isMirrored ? 0 : 12
        selectByMouse: true
        selectedTextColor: Theme.text
        selectionColor: Theme.selection
        text: editor.store.draft
        textFormat: TextEdit.PlainText
        topPadding: 4
        wrapMode: TextEdit.Wrap

        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Menu || (event.matches(StandardKey.Paste) && image.paste());
            if (event.key === Qt.Key_Menu)
                menu.popupForKeys(area, area.cursorRectangle.x, area.cursorRectangle.y + area.cursorRectangle.height);
        }
        onTextChanged: editor.store.draft = text

        TapHandler {
            acceptedButtons: Qt.RightButton

            onTapped: menu.popup()
        }
    }
    TextMenu {
        id: menu

        text: area
    }
    ImagePaste {
        id: image

        store: editor.store
    }
}
