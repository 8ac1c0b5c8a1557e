// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma Singleton

import QtQuick
import org.lumora.ui

/// Colours, type sizes, spacings and radii of every view. Light or dark, accent and contrast are the desktop's.
QtObject {
    id: theme

    readonly property DesktopSettings desktop: DesktopSettings {}
    readonly property SystemPalette palette: SystemPalette {}

    readonly property bool isDark: desktop.prefersDark || (!desktop.prefersLight && palette.window.hslLightness < 0.5)
    readonly property bool isHighContrast: desktop.wantsHighContrast
    readonly property bool isAnimated: !desktop.wantsReducedMotion

    /// Whether the interface is written from right to left; the views are mirrored then.
    readonly property bool isMirrored: Qt.application.layoutDirection === Qt.RightToLeft // qmllint disable

    // Grounds
    readonly property color ground: isDark ? (isHighContrast ? "#000000" : "#161618") : "#ffffff"
    readonly property color sidebarGround: isDark ? (isHighContrast ? "#000000" : "#1e1e21") : isHighContrast ? "#ffffff" : "#f4f4f6"
    readonly property color raisedGround: isDark ? "#2c2c30" : "#ffffff"
    readonly property color fill: tint(isDark ? 0.06 : 0.04)
    readonly property color hoverFill: tint(isDark ? 0.09 : 0.07)
    readonly property color pressedFill: tint(isDark ? 0.13 : 0.11)
    readonly property color hairline: tint(isHighContrast ? 0.6 : isDark ? 0.09 : 0.08)
    readonly property color segment: isDark ? "#3a3a3e" : "#ffffff"

    // Text and symbols
    readonly property color text: isHighContrast ? tint(1) : isDark ? "#ededee" : "#1d1d1f"
    readonly property color secondaryText: isHighContrast ? tint(0.88) : isDark ? "#a8a8ad" : "#626267"
    readonly property color tertiaryText: isHighContrast ? tint(0.8) : isDark ? "#8e8e93" : "#6e6e73"
    readonly property color accent: desktop.hasAccent ? desktop.accent : hasDesktopPalette ? palette.highlight : "#3a6ee8"
    readonly property color accentText: contrast(accent, Qt.rgba(1, 1, 1, 1)) >= 3 ? "#ffffff" : "#1d1d1f"
    readonly property color accentSymbol: readable(accent, isHighContrast ? 7 : 4.5)
    readonly property color selection: Qt.alpha(accent, isDark ? 0.55 : 0.25)
    readonly property color selectedRow: Qt.alpha(accent, 0.16)

    // States
    readonly property color ready: "#34c15a"
    readonly property color warning: isDark ? "#ffa640" : "#e07b00"
    readonly property color warningGround: Qt.alpha("#ff9500", 0.12)
    readonly property color failure: isDark ? "#ff6961" : "#c9281d"
    readonly property color failureGround: Qt.alpha("#ff3b30", 0.1)

    // Under X, what is asked for here has already gone into the size of a logical pixel.
    readonly property real textScale: Qt.platform.pluginName === "xcb" ? 1 : desktop.textScale

    // Type, in logical pixels
    readonly property int titleSize: scaled(20)
    readonly property int headlineSize: scaled(15)
    readonly property int bodySize: scaled(14)
    readonly property int rowSize: scaled(13)
    readonly property int captionSize: scaled(12)
    readonly property int smallCaptionSize: scaled(11)

    // Spacings, from lines that belong together to sections, and paddings
    readonly property int lineSpacing: 4
    readonly property int partSpacing: 6
    readonly property int panelSpacing: 7
    readonly property int rowSpacing: 8
    readonly property int bannerSpacing: 9
    readonly property int groupSpacing: 10
    readonly property int sectionSpacing: 20
    readonly property int buttonPadding: 10
    readonly property int edgePadding: 12
    readonly property int panelPadding: 14
    readonly property int sidebarPadding: 16
    readonly property int listPadding: 24

    // Symbols
    readonly property int symbolSize: 16
    readonly property int avatarSize: 22

    // Radii
    readonly property int cardRadius: 12
    readonly property int buttonRadius: 10
    readonly property int controlRadius: 8
    readonly property int imageRadius: 9
    readonly property int rowRadius: 7

    // Without a desktop's own palette, the toolkit highlights in a blue of its own.
    readonly property bool hasDesktopPalette: !Qt.colorEqual(palette.highlight, "#308cc6")

    function scaled(size: real): int {
        return Math.round(size * textScale);
    }

    /// Black over a light ground, white over a dark one.
    function tint(strength: real): color {
        return isDark ? Qt.rgba(1, 1, 1, strength) : Qt.rgba(0, 0, 0, strength);
    }

    function luminance(of: color): real {
        const linear = share => share <= 0.04045 ? share / 12.92 : Math.pow((share + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(of.r) + 0.7152 * linear(of.g) + 0.0722 * linear(of.b);
    }

    /// From 1, the same, to 21, black on white (WCAG 2.1).
    function contrast(one: color, other: color): real {
        const luminances = [luminance(one), luminance(other)];
        return (Math.max(...luminances) + 0.05) / (Math.min(...luminances) + 0.05);
    }

    /// The colour, brought towards the text's colour until it stands out from the ground.
    function readable(ink: color, least: real): color {
        for (let share = 0; share < 1; share += 0.1) {
            const mixed = Qt.tint(ink, Qt.alpha(text, share));
            if (contrast(mixed, ground) >= least)
                return mixed;
        }
        return text;
    }
}
