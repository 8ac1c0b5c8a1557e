// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// How much of the model's context the latest prompt took.
PlainText {
    id: meter

    required property real tokens
    required property real size

    readonly property string hint: qsTr("Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.")

    Accessible.description: hint
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
    text: qsTr("Context %1 / %2 tokens").arg(String(tokens)).arg(String(size))

    HoverHandler {
        id: pointer
    }
    Hint {
        text: meter.hint
        visible: pointer.hovered
    }
}
