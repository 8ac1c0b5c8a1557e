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

/// A word in more than so many documents, and in more than a quarter of all, says little about any of them.
constexpr qint64 commonDocuments = 1000;
constexpr qint64 commonShare = 4;

QByteArray anyOf(const QList<CountedPhrase> &phrases)
{
    QByteArrayList texts;
    for (const CountedPhrase &counted : phrases)
        texts.append(counted.phrase);
    return texts.join(" OR ");
}

QByteArray ranking(const QList<CountedPhrase> &phrases, qsizetype passedOver)
{
    // How much the columns weigh: title, text.
    QByteArray call = "relevance(" + QByteArray::number(passedOver) + ", 10.0, 1.0";
    for (const CountedPhrase &counted : phrases)
        call += ", " + QByteArray::number(counted.documents);
    return call + ')';
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

// Common words bring in no document by themselves where there are rarer ones that bring in enough: they would make
// every document a result, and every document would have to be ranked.
Match matchFor(const QList<CountedPhrase> &phrases, qint64 documents, qint64 wanted)
{
    const qint64 most = std::max(commonDocuments, documents / commonShare);
    QList<CountedPhrase> rare;
    qint64 mostOfRare = 0;
    for (const CountedPhrase &counted : phrases) {
        if (counted.documents > most)
            continue;
        rare.append(counted);
        mostOfRare = std::max(mostOfRare, counted.documents);
    }
    if (rare.size() == phrases.size() || mostOfRare < wanted)
        return {anyOf(phrases), ranking(phrases, 0)};
    // What comes after the AND is true of all of them, and has the index look up the common words in these documents
    // only.
    return {'(' + anyOf(rare) + ") AND (" + anyOf(phrases) + ')', ranking(phrases, rare.size())};
}

} // namespace lumora
