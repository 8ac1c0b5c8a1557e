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

// A character may have any number of marks, so that a text of any size may be one character. Where a text from anywhere
// must not take more room than its count of characters suggests, these give no more than 32 UTF-16 units for each that
// was asked for. All that people write stays far below: letters with their marks take up to some ten units, and a
// family with skin tones 19. What does not fit as a whole is left out; a text whose one character does not fit is cut
// in it.

QStringView firstCharactersBounded(QStringView text, qsizetype count);
QStringView lastCharactersBounded(QStringView text, qsizetype count);

} // namespace lumora
