// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// A text that is shown as it stands, whatever it holds.
Text {
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    color: Theme.text
    font.pixelSize: Theme.bodySize
    horizontalAlignment: Text.AlignLeft // of the interface, mirrored with it
    textFormat: Text.PlainText
}
