// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// A small sign that something is under way.
Icon {
    id: spinner

    required property string label

    Accessible.name: label
    Accessible.role: Accessible.Animation
    color: Theme.secondaryText
    implicitHeight: 18
    implicitWidth: 18
    source: Symbols.spinner

    RotationAnimator on rotation {
        duration: Theme.isAnimated ? 1000 : 6000
        from: 0
        loops: Animation.Infinite
        running: spinner.visible
        to: 360
    }
}
