// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// Something that is made when it is needed for the first time. Its delegate hides itself while it is not.
Repeater {
    required property bool isNeeded
    property bool wasNeeded: false

    model: isNeeded || wasNeeded ? 1 : 0

    onIsNeededChanged: wasNeeded = true
}
