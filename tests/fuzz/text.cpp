// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"
#include "platform/text/graphemes.h"
#include "platform/text/textrules.h"
#include "platform/text/textsearch.h"
#include "store/replytext.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace lumora;

namespace {

/// Where characters begin and end, as ICU sees them when it gets the whole text.
std::vector<qsizetype> boundaries(const QString &text)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> rules(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString whole(false, reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
    rules->setText(whole);
    std::vector<qsizetype> result;
    for (int32_t at = rules->first(); at != icu::BreakIterator::DONE; at = rules->next())
        result.push_back(at);
    return result;
}

void checkCharacters(const QString &text, qsizetype wanted)
{
    const std::vector<qsizetype> ends = boundaries(text);
    const qsizetype count = qsizetype(ends.size()) - 1;
    const qsizetype some = std::min(wanted, count);
    fuzz::require(characterCount(text) == count, "The number of characters is wrong.");
    fuzz::require(firstCharacters(text, wanted).size() == ends[size_t(some)], "The first characters are wrong.");
    fuzz::require(lastCharacters(text, wanted).size() == text.size() - ends[size_t(count - some)],
                  "The last characters are wrong.");
    fuzz::require(firstCharactersBounded(text, wanted).size() <= 32 * wanted &&
                      lastCharactersBounded(text, wanted).size() <= 32 * wanted,
                  "A bound is broken.");
}

void checkWords(const QString &text)
{
    const std::vector<qsizetype> ends = boundaries(text);
    qsizetype end = 0;
    for (const QStringView word : words(text)) {
        const qsizetype start = word.data() - QStringView(text).data();
        fuzz::require(!word.isEmpty() && start >= end, "A word is empty or comes twice.");
        end = start + word.size();
        // What is one character with something beside it, as a letter after an Arabic number sign, is not looked for.
        const bool isWhole = std::ranges::binary_search(ends, start) && std::ranges::binary_search(ends, end);
        const bool isPlain = std::ranges::all_of(word, [](QChar unit) { return unit.unicode() < 0x80; });
        if (!isWhole || !isPlain)
            continue;
        const qsizetype found = firstOccurrence(text, word);
        fuzz::require(found >= 0 && found <= start, "A word of a text is not found in it.");
    }
}

} // namespace

void lumora::fuzz::tryInput(std::string_view input)
{
    if (input.size() < 2)
        return;
    // As UTF-8, or as UTF-16 with all that can be wrong in it.
    const qsizetype wanted = input[0] & 0x3F;
    const bool isUtf8 = (input[0] & 0x40) != 0;
    input.remove_prefix(1);
    QString text = QString::fromUtf8(input.data(), qsizetype(input.size()));
    if (!isUtf8) {
        text.clear();
        for (size_t i = 0; i + 1 < input.size(); i += 2)
            text += QChar(uchar(input[i]), uchar(input[i + 1]));
    }

    checkCharacters(text, wanted);
    checkWords(text);
    require(trimmed(trimmed(text)) == trimmed(text), "A trimmed text can be trimmed.");
    require(lowercased(lowercased(text)) == lowercased(text), "A text in lower case has a lower one.");
    require(wellFormed(text).isValidUtf16() && wellFormed(text).size() == text.size(), "A text is not well-formed.");
    const QString reply = cleanReplyText(text);
    require(trimmed(reply).size() == reply.size(), "A reply has white space at an end.");
    require(caseFolded(caseFolded(text)) == caseFolded(text), "A folded text can be folded.");
}
