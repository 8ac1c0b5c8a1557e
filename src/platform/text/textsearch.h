// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>

#include <stop_token>

namespace lumora {

// Any thread may ask.

/// The words of a text: its longest runs of letters and digits, with the marks and joiners that belong to them. Views
/// into the text.
QList<QStringView> words(QStringView text);

/// The beginning of a text, which can be searched for words by itself: no word goes across its end. All of a text that
/// is not long; empty for an empty one.
QStringView firstPiece(QStringView text);

/// Where a word first occurs in a text, whatever its case and however its accents are encoded, inside longer words too;
/// -1 where it does not, or stop was requested. No locale plays a role.
qsizetype firstOccurrence(QStringView text, QStringView word, const std::stop_token &stop = {});

/// The text as it is compared where case is to be ignored, by the rules of a locale such as "tr_TR"; empty for the
/// user's own. One text contains another where its folded form does.
QString caseFolded(QStringView text, const QString &localeName = {});

} // namespace lumora
