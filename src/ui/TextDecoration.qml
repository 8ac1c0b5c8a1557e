// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// What stands behind a part of a message's text: the ground of code, the bar beside a quote, a line of a table.
Rectangle {
    required property rect area
    required property bool isCode
    required property bool isQuote

    color: isCode ? Theme.fill : isQuote ? Theme.pressedFill : Theme.hairline
    height: area.height
    radius: isCode ? Theme.controlRadius : isQuote ? width / 2 : 0
    width: area.width
    x: area.x
    y: Math.round(area.y + ((parent as TextEdit)?.topPadding ?? 0) / (isCode ? 1 : 2))
    z: -1
}
