// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

namespace lumora {

// A character is what a user perceives as one: an extended grapheme cluster. Any thread may ask. Each function looks at
// no more of the text than its answer needs.

/// The number of characters.
qsizetype characterCount(QStringView text);

/// The first characters, the whole text where it has no more than that.
QStringView firstCharacters(QStringView text, qsizetype count);

/// The last characters, the whole text where it has no more than that. Found from the end.
QStringView lastCharacters(QStringView text, qsizetype count);

} // namespace lumora
