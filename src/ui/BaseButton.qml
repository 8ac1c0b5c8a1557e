// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Templates as T

/// What all buttons have in common. A click leaves the keyboard where it is. To screen readers this is an
/// AccessibleButton.
T.Button {
    id: button

    property string description ///< for screen readers, beside the text

    Accessible.role: Accessible.Button
    Keys.onEnterPressed: button.clicked()
    Keys.onReturnPressed: button.clicked()
    focusPolicy: Qt.TabFocus
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
}
