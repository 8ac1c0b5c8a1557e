// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

PlainText {
    Accessible.role: Accessible.Heading
    color: Theme.secondaryText
    elide: Text.ElideRight
    font.pixelSize: Theme.captionSize
    font.weight: Font.DemiBold
}
