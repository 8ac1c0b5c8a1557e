// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// Takes the keyboard through a list of messages. Up and Down go from message to message, and through one that the view
/// does not hold; the page keys, Home and End scroll.
Item {
    id: navigation

    required property ListView list
    property Item held ///< has the keyboard within the list, or had it last
    property bool hasEntered: false ///< a row, and has not scrolled since
    property bool isInterrupted: false ///< by a menu that has the keyboard for a while

    signal copyRequested(row: int)
    signal linksRequested(row: int)
    signal scrolled(isAtEnd: bool)

    // Where the list's ends are is known only once they are near.
    function scroll(distance: real) {
        const first = list.itemAtIndex(0);
        const last = list.itemAtIndex(list.count - 1);
        const highest = first ? first.y - list.topMargin : -Infinity;
        const lowest = last ? Math.max(highest, last.y + last.height + list.bottomMargin - list.height) : Infinity;
        list.contentY = Math.max(highest, Math.min(lowest, list.contentY + distance));
    }
    function messageAt(y: real): int {
        const found = list.indexAt(list.width / 2, list.contentY + y);
        return found >= 0 ? found : list.indexAt(list.width / 2, list.contentY + y + list.spacing);
    }
    function enter(index: int) {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, index));
        reveal();
        hasEntered = true;
    }
    function reveal() {
        const row = list.currentItem;
        if (row)
            scroll(row.height > list.height || row.y < list.contentY ? row.y - list.contentY : Math.max(0, hiddenBelow(row)));
    }
    function stay() {
        if (hasEntered && list.currentItem && list.currentItem.height <= list.height)
            reveal();
    }
    function hiddenBelow(row: Item): real {
        return row.y + row.height - list.contentY - list.height;
    }
    function step(direction: int) {
        const row = list.currentItem;
        if (!row) {
            const found = messageAt(direction > 0 ? 1 : list.height - list.bottomMargin - 1);
            enter(found < 0 && direction < 0 ? list.count - 1 : found);
            return;
        }
        const hidden = direction > 0 ? hiddenBelow(row) : list.contentY - row.y;
        if (hidden > 1) {
            scroll(direction * Math.min(hidden, 80));
        } else {
            // A row has no certain place until it comes into view.
            const next = list.itemAtIndex(list.currentIndex + direction);
            if (!next || hiddenBelow(next) > 0 || next.y < list.contentY)
                scroll(direction * (list.spacing + 1));
            enter(list.currentIndex + direction);
        }
    }
    function turnPage(direction: int) {
        scroll(direction * (list.height - 60));
        if (list.currentItem)
            list.currentIndex = messageAt(direction > 0 ? list.height - 60 : 60);
    }
    function leap(index: int) {
        list.positionViewAtIndex(index, index === 0 ? ListView.Beginning : ListView.End);
        scroll(index === 0 ? -list.topMargin : list.bottomMargin);
        if (list.currentItem)
            list.currentIndex = index;
    }

    /// Takes the keyboard out of a message, not from the list itself.
    function release() {
        if (held && held !== list)
            held.focus = false;
    }

    // Whoever comes back begins with what is shown then.
    Window.onActiveFocusItemChanged: {
        if (list.activeFocus) {
            held = Window.activeFocusItem;
            return;
        }
        if (isInterrupted)
            return;
        release();
        held = null;
        list.currentIndex = -1;
    }

    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy) && list.currentItem;
        if (event.accepted) {
            copyRequested(list.currentIndex);
            return;
        }
        const keys = new Map([[Qt.Key_Up, () => step(-1)], [Qt.Key_Down, () => step(1)], [Qt.Key_PageUp, () => turnPage(-1)], [Qt.Key_PageDown, () => turnPage(1)], [Qt.Key_Home, () => leap(0)], [Qt.Key_End, () => leap(list.count - 1)]]);
        const opensLinks = list.currentItem && [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key);
        if (opensLinks) {
            event.accepted = true;
            linksRequested(list.currentIndex);
            return;
        }
        event.accepted = keys.has(event.key);
        if (!event.accepted)
            return;
        hasEntered = false;
        keys.get(event.key)();
        const last = list.itemAtIndex(list.count - 1);
        scrolled(last !== null && hiddenBelow(last) <= 1);
    }

    // Rows that have just come into view may find their heights only then.
    Connections {
        function onHeightChanged() {
            navigation.stay();
        }
        function onYChanged() {
            navigation.stay();
        }

        target: navigation.list.currentItem
    }
    Connections {
        function onMovementStarted() {
            navigation.hasEntered = false;
        }

        target: navigation.list
    }
}
