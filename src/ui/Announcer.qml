// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.lumora.ui

/// Says what happens to screen readers. They speak a notification when it comes on the screen; these have nothing to
/// see. There are several, since a reader asks for the text only after it has heard that there is one.
Item {
    id: announcer

    required property ChatStore store
    property int count
    property int latest: -1 ///< the one that is shown

    Repeater {
        id: notifications

        model: 4

        delegate: Item {
            required property int index
            property string text

            Accessible.name: text
            Accessible.role: Accessible.Notification
            height: 1
            visible: index === announcer.latest
            width: 1
        }
    }
    Announcements {
        store: announcer.store

        onAnnounced: text => {
            const index = announcer.count++ % notifications.count;
            notifications.itemAt(index).text = text;
            announcer.latest = index;
            end.restart();
        }
    }
    Timer {
        id: end

        interval: 5000 // whoever is to read it has done so

        onTriggered: announcer.latest = -1
    }
}
