// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// White space (Unicode category Zs and U+0009) or a line break (U+000A to U+000D, U+0085, U+2028, U+2029).
bool isWhiteSpaceOrLineBreak(QChar unit);

/// The text without white space and line breaks at both ends.
QStringView trimmed(QStringView text);

/// Full Unicode lowercasing, independent of any locale: it knows final sigma and characters that become two.
QString lowercased(const QString &text);

/// Text that every encoding can carry: a surrogate without its other half becomes U+FFFD.
QString wellFormed(const QString &text);

} // namespace lumora
