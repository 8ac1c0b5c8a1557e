// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/excerpt.h"

#include "platform/text/graphemes.h"
#include "platform/text/textsearch.h"

namespace lumora {

namespace {

constexpr qsizetype excerptLength = 1000;
constexpr qsizetype lengthBeforeMatch = 200;
constexpr qsizetype shortestWord = 3;

/// Where the first word of the query that occurs at all stands; 0 where none does.
qsizetype anchor(QStringView text, QStringView query, const std::stop_token &stop)
{
    for (const QStringView word : words(query)) {
        if (firstCharacters(word, shortestWord - 1).size() == word.size())
            continue;
        if (const qsizetype position = firstOccurrence(text, word, stop); position >= 0)
            return position;
    }
    return 0;
}

} // namespace

QString excerpt(const QString &text, const QString &query, const std::stop_token &stop)
{
    const QStringView whole = text;
    const qsizetype match = anchor(whole, query, stop);
    const qsizetype start = match - lastCharactersBounded(whole.first(match), lengthBeforeMatch).size();
    return firstCharactersBounded(whole.sliced(start), excerptLength).toString();
}

} // namespace lumora
