// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

pragma Singleton

import QtQuick

/// The program's own symbols, all of one family: a grid of 24, lines of 1.5.
QtObject {
    readonly property url arrowcircle: Qt.resolvedUrl("icons/arrowcircle.svg")
    readonly property url arrowup: Qt.resolvedUrl("icons/arrowup.svg")
    readonly property url bubble: Qt.resolvedUrl("icons/bubble.svg")
    readonly property url checkcircle: Qt.resolvedUrl("icons/checkcircle.svg")
    readonly property url document: Qt.resolvedUrl("icons/document.svg")
    readonly property url exclamation: Qt.resolvedUrl("icons/exclamation.svg")
    readonly property url gear: Qt.resolvedUrl("icons/gear.svg")
    readonly property url imagemissing: Qt.resolvedUrl("icons/imagemissing.svg")
    readonly property url lockshield: Qt.resolvedUrl("icons/lockshield.svg")
    readonly property url newchat: Qt.resolvedUrl("icons/newchat.svg")
    readonly property url paperclip: Qt.resolvedUrl("icons/paperclip.svg")
    readonly property url person: Qt.resolvedUrl("icons/person.svg")
    readonly property url plus: Qt.resolvedUrl("icons/plus.svg")
    readonly property url sparkles: Qt.resolvedUrl("icons/sparkles.svg")
    readonly property url spinner: Qt.resolvedUrl("icons/spinner.svg")
    readonly property url stack: Qt.resolvedUrl("icons/stack.svg")
    readonly property url stop: Qt.resolvedUrl("icons/stop.svg")
    readonly property url warning: Qt.resolvedUrl("icons/warning.svg")
    readonly property url xmark: Qt.resolvedUrl("icons/xmark.svg")
    readonly property url xmarkcircle: Qt.resolvedUrl("icons/xmarkcircle.svg")
}
