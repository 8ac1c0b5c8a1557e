// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import org.lumora.ui

/// A menu entry that takes something away for good.
ContextItem {
    color: Theme.failure
    highlight: Theme.failureGround
}
