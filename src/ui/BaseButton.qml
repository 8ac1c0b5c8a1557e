// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// What all buttons have in common. A click leaves the keyboard where it is.
T.Button {
    id: button

    Accessible.name: text
    Accessible.role: Accessible.Button
    focusPolicy: Qt.TabFocus
    implicitWidth: implicitContentWidth + leftPadding + rightPadding

    Accessible.onPressAction: button.clicked()
}
