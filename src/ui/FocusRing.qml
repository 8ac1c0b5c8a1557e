// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// Shows which control the keyboard acts on.
Rectangle {
    required property bool isShown

    anchors.fill: parent
    anchors.margins: -2
    border.color: Theme.accentSymbol
    border.width: 2
    color: "transparent"
    visible: isShown
}
