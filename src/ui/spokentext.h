// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/records.h"

#include <QString>

namespace lumora {

/// What a message says, as plain text without the marks of Markdown. A card gives its title and all its points. Empty
/// where there is nothing yet.
QString spokenText(const ChatMessage &message);

} // namespace lumora
