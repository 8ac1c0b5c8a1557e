// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/wordbreaker.h"

#include "platform/search/irregularforms.h"
#include "platform/search/wordfolding.h"

#include <unicode/ubrk.h>

namespace lumora {

namespace {

constexpr int32_t longestWord = 64; // UTF-16 units

std::unique_ptr<icu::BreakIterator> makeRules()
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> rules(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status))
        throw std::bad_alloc();
    return rules;
}

} // namespace

WordBreaker::WordBreaker()
    : m_rules(makeRules())
{
}

void WordBreaker::forEachWord(QStringView text, const WordSink &sink)
{
    const icu::UnicodeString alias(false, text.utf16(), int32_t(text.size()));
    m_rules->setText(alias);
    int32_t start = m_rules->first();
    for (int32_t end = m_rules->next(); end != icu::BreakIterator::DONE; start = end, end = m_rules->next()) {
        if (m_rules->getRuleStatus() < UBRK_WORD_NONE_LIMIT)
            continue;
        m_piece.setTo(alias, start, end - start);
        foldWord(m_piece);
        if (!takeFolded(sink))
            return;
    }
}

bool WordBreaker::takeFolded(const WordSink &sink)
{
    int32_t start = 0;
    int32_t position = 0;
    while (position < m_piece.length()) {
        const int32_t next = m_piece.moveIndex32(position, 1);
        if (!isWordCharacter(char32_t(m_piece.char32At(position)))) {
            if (!give(start, position, sink))
                return false;
            start = next;
        }
        position = next;
    }
    return give(start, position, sink);
}

bool WordBreaker::give(int32_t start, int32_t end, const WordSink &sink)
{
    if (start == end)
        return true;
    if (end - start > longestWord)
        end = m_piece.getChar32Start(start + longestWord);
    m_word.clear();
    m_piece.tempSubStringBetween(start, end).toUTF8String(m_word);
    return sink(regularForm(m_word));
}

} // namespace lumora
