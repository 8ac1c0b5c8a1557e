// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// A reply as it is kept: every "<start_of_turn>model" that some models write is taken out, then white space and line
/// breaks at both ends.
QString cleanReplyText(const QString &text);

} // namespace lumora
