// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/textsearch.h"

#include "platform/text/textrules.h"

#include <QLocale>

#include <unicode/normalizer2.h>
#include <unicode/stsearch.h>
#include <unicode/tblcoll.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <memory>

namespace lumora {

namespace {

/// Read-only: the text is not copied.
icu::UnicodeString icuText(QStringView text)
{
    return {false, text.utf16(), int32_t(text.size())};
}

QString fromIcu(const icu::UnicodeString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

bool startsWord(UChar32 character)
{
    constexpr uint32_t lettersAndNumbers = U_GC_L_MASK | U_GC_N_MASK;
    return (U_GET_GC_MASK(character) & lettersAndNumbers) != 0;
}

bool continuesWord(UChar32 character)
{
    constexpr UChar32 zeroWidthJoiner = 0x200D;
    // Vowel signs of Indic scripts take room of their own, and so do not count as extending what they belong to.
    return startsWord(character) || character == zeroWidthJoiner ||
           u_hasBinaryProperty(character, UCHAR_GRAPHEME_EXTEND) ||
           u_getIntPropertyValue(character, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_SPACING_MARK;
}

/// The order of texts in which a and A are the same, a and ä are not.
const icu::RuleBasedCollator *caselessOrder()
{
    static const std::unique_ptr<icu::Collator> order = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> root(icu::Collator::createInstance(icu::Locale::getRoot(), status));
        root->setStrength(icu::Collator::SECONDARY);
        root->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
        return root;
    }();
    return dynamic_cast<const icu::RuleBasedCollator *>(order.get());
}

} // namespace

QList<QStringView> words(QStringView text)
{
    QList<QStringView> result;
    qsizetype start = -1; // of the word that is being read
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype before = at;
        UChar32 character = 0;
        U16_NEXT(text.utf16(), at, text.size(), character);
        const bool isInWord = start >= 0 ? continuesWord(character) : startsWord(character);
        if (isInWord && start < 0)
            start = before;
        if (!isInWord && start >= 0)
            result.append(text.sliced(start, before - start));
        if (!isInWord)
            start = -1;
    }
    if (start >= 0)
        result.append(text.sliced(start));
    return result;
}

QStringView firstPiece(QStringView text)
{
    constexpr qsizetype length = 1 << 16; // milliseconds of searching
    if (text.size() <= length)
        return text;
    const auto end = std::find_if(text.begin() + length, text.end(), isWhiteSpaceOrLineBreak);
    return text.first(end - text.begin());
}

qsizetype firstOccurrence(QStringView text, QStringView word, const std::stop_token &stop)
{
    if (text.isEmpty() || word.isEmpty())
        return -1;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> order(caselessOrder()->clone());
    icu::StringSearch search(icuText(word), icuText(text.first(1)), dynamic_cast<icu::RuleBasedCollator *>(order.get()),
                             nullptr, status);
    QStringView piece;
    for (qsizetype start = 0; start < text.size() && !stop.stop_requested(); start += piece.size()) {
        piece = firstPiece(text.sliced(start));
        search.setText(icuText(piece), status);
        const int32_t position = search.first(status);
        if (U_SUCCESS(status) && position != USEARCH_DONE)
            return start + position;
    }
    return -1;
}

QString caseFolded(QStringView text, const QString &localeName)
{
    const QString name = localeName.isEmpty() ? QLocale::system().name() : localeName;
    const bool isTurkic = name.startsWith(QLatin1String("tr")) || name.startsWith(QLatin1String("az"));
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *composed = icu::Normalizer2::getNFCInstance(status);
    icu::UnicodeString folded = composed->normalize(icuText(text), status);
    folded.foldCase(isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    return fromIcu(composed->normalize(folded, status));
}

} // namespace lumora
