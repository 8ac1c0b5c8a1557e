// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// The Markdown of a message that is still being written, as its author is likely to go on: what is open at the end is
/// closed, and marks of which nobody can tell yet what they will be are left out. So nothing that is shown takes
/// another look when the rest arrives.
QString withEndClosed(const QString &markdown);

} // namespace lumora
