// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

/// A button with a title and a symbol. A highlighted one is what the user most likely wants next.
BaseButton {
    id: button

    required property url symbol

    readonly property color ink: highlighted && enabled ? Theme.accentText : enabled ? Theme.text : Theme.tertiaryText

    implicitHeight: 32
    leftPadding: Theme.panelPadding
    rightPadding: Theme.panelPadding

    background: Rectangle {
        color: !button.enabled ? Theme.fill : button.highlighted ? Theme.accent : button.down ? Theme.pressedFill : button.hovered ? Theme.hoverFill : Theme.fill
        opacity: button.highlighted && button.down ? 0.8 : button.highlighted && button.hovered ? 0.92 : 1
        radius: Theme.controlRadius

        FocusRing {
            isShown: button.activeFocus
            radius: Theme.controlRadius + 2
        }
    }
    contentItem: SymbolLabel {
        Accessible.ignored: true
        color: button.ink
        font.pixelSize: Theme.rowSize
        font.weight: Font.DemiBold
        spacing: Theme.rowSpacing
        symbol: button.symbol
        symbolColor: button.ink
        text: button.text
    }
}
