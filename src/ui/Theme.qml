// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma Singleton

import QtQuick

/// Colours, type sizes, spacings and radii of every view. Light or dark as the desktop's palette is.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette {}
    readonly property bool isDark: palette.window.hslLightness < 0.5

    // Grounds
    readonly property color ground: isDark ? "#161618" : "#ffffff"
    readonly property color sidebarGround: isDark ? "#1e1e21" : "#f4f4f6"
    readonly property color raisedGround: isDark ? "#2c2c30" : "#ffffff"
    readonly property color fill: tint(isDark ? 0.06 : 0.04)
    readonly property color hoverFill: tint(isDark ? 0.09 : 0.07)
    readonly property color pressedFill: tint(isDark ? 0.13 : 0.11)
    readonly property color hairline: tint(isDark ? 0.09 : 0.08)
    readonly property color segment: isDark ? "#3a3a3e" : "#ffffff"

    // Text and symbols
    readonly property color text: isDark ? "#ededee" : "#1d1d1f"
    readonly property color secondaryText: isDark ? "#a8a8ad" : "#626267"
    readonly property color tertiaryText: isDark ? "#8e8e93" : "#727277"
    readonly property color accent: "#3a6ee8"
    readonly property color accentText: "#ffffff"
    readonly property color accentSymbol: isDark ? "#7aa2ff" : "#3a6ee8"
    readonly property color selection: Qt.alpha(accent, isDark ? 0.55 : 0.25)
    readonly property color selectedRow: Qt.alpha(accent, 0.16)

    // States
    readonly property color ready: "#34c15a"
    readonly property color warning: isDark ? "#ffa640" : "#e07b00"
    readonly property color warningGround: Qt.alpha("#ff9500", 0.12)
    readonly property color failure: isDark ? "#ff6961" : "#c9281d"
    readonly property color failureGround: Qt.alpha("#ff3b30", 0.1)

    // Type, in logical pixels
    readonly property int titleSize: 20
    readonly property int headlineSize: 15
    readonly property int bodySize: 14
    readonly property int rowSize: 13
    readonly property int captionSize: 12
    readonly property int smallCaptionSize: 11

    // Symbols
    readonly property int symbolSize: 16
    readonly property int avatarSize: 22

    readonly property int cardRadius: 12
    readonly property int buttonRadius: 10
    readonly property int controlRadius: 8
    readonly property int rowRadius: 7

    /// Black over a light ground, white over a dark one.
    function tint(strength: real): color {
        return isDark ? Qt.rgba(1, 1, 1, strength) : Qt.rgba(0, 0, 0, strength);
    }
}
