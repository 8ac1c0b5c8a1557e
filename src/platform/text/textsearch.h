// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>

namespace lumora {

// Any thread may ask.

/// The words of a text: its longest runs of letters and digits, with the marks and joiners that belong to them. Views
/// into the text.
QList<QStringView> words(QStringView text);

/// Where a word first occurs in a text, whatever its case and however its accents are encoded, inside longer words too;
/// -1 where it does not. No locale plays a role.
qsizetype firstOccurrence(QStringView text, QStringView word);

/// The text as it is compared where case is to be ignored, by the rules of a locale such as "tr_TR"; empty for the
/// user's own. One text contains another where its folded form does.
QString caseFolded(const QString &text, const QString &localeName = {});

} // namespace lumora
