// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/question.h"

#include "platform/search/stopwords.h"
#include "platform/search/wordbreaker.h"

#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include <algorithm>

namespace lumora {

namespace {

constexpr qsizetype longestQuestion = 10'000; // UTF-16 units that are looked at
constexpr qsizetype mostWords = 32;

/// Whether longer words that begin with it are meant as well: a Korean word carries its particles with it, and in
/// Chinese and Japanese it is not always clear where a compound ends.
bool isStem(std::string_view word)
{
    const auto characters = icu::UnicodeString::fromUTF8(word);
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(characters.char32At(0), &status);
    return characters.countChar32() > 1 &&
           (script == USCRIPT_HANGUL || script == USCRIPT_HAN || script == USCRIPT_KATAKANA);
}

QByteArray phraseOf(std::string_view word)
{
    // Words hold letters, marks and numbers only, so that there is nothing to escape.
    return '"' + QByteArray(word.data(), qsizetype(word.size())) + (isStem(word) ? "\"*" : "\"");
}

QByteArray ranking(qsizetype firstScored)
{
    // How much the columns weigh: title, text.
    return "relevance(" + QByteArray::number(firstScored) + ", 10.0, 1.0)";
}

} // namespace

QList<QByteArray> questionPhrases(QStringView question)
{
    QList<QByteArray> telling;
    QList<QByteArray> others;
    WordBreaker().forEachWord(question.first(std::min(question.size(), longestQuestion)), [&](std::string_view word) {
        QList<QByteArray> &phrases = isStopWord(word) ? others : telling;
        if (const QByteArray phrase = phraseOf(word); phrases.size() < mostWords && !phrases.contains(phrase))
            phrases.append(phrase);
        return telling.size() < mostWords;
    });
    return telling.isEmpty() ? others : telling;
}

Match matchAny(const QList<QByteArray> &phrases)
{
    return {phrases.join(" OR "), ranking(0)};
}

Match matchAny(const QList<QByteArray> &chosen, const QList<QByteArray> &others)
{
    // What comes after the AND is true of all of them, and makes the index look up the others in these documents only.
    const QByteArray anyChosen = chosen.join(" OR ");
    return {'(' + anyChosen + ") AND (" + anyChosen + " OR " + others.join(" OR ") + ')', ranking(chosen.size())};
}

} // namespace lumora
