// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/graphemes.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>

namespace lumora {

namespace {

/// Code units that are a whole character, whatever stands beside them, as long as that is one of them too (but for CR
/// LF). Latin, kana and the common ideographs: nearly all text, for which the segmentation rules need not be asked.
bool standsAlone(QChar unit)
{
    const char16_t code = unit.unicode();
    return code < 0x0300 || (code >= 0x3041 && code <= 0x3096) || (code >= 0x30A1 && code <= 0x30FA) ||
           (code >= 0x3400 && code <= 0x9FFF);
}

bool isCertainBoundary(QChar before, QChar after)
{
    return standsAlone(before) && standsAlone(after) && !(before == u'\r' && after == u'\n');
}

struct TextCloser
{
    void operator()(UText *text) const { utext_close(text); }
};

icu::BreakIterator *characterRules()
{
    thread_local const std::unique_ptr<icu::BreakIterator> rules = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return rules.get();
}

/// Steps from boundary to boundary over a text that must outlive it. Asks ICU only where neighbours may belong
/// together.
class CharacterCursor
{
public:
    explicit CharacterCursor(QStringView text)
        : m_text(text)
    {
    }

    /// The next boundary behind position, which is below the text's length.
    qsizetype next(qsizetype position)
    {
        if (position + 1 == m_text.size() || isCertainBoundary(m_text[position], m_text[position + 1]))
            return position + 1;
        return rules()->following(int32_t(position));
    }

    /// The boundary before position, which is above 0.
    qsizetype previous(qsizetype position)
    {
        if (position == 1 || isCertainBoundary(m_text[position - 2], m_text[position - 1]))
            return position - 1;
        return rules()->preceding(int32_t(position));
    }

private:
    icu::BreakIterator *rules()
    {
        if (!m_icuText) {
            UErrorCode status = U_ZERO_ERROR;
            m_icuText.reset(utext_openUChars(nullptr, m_text.utf16(), m_text.size(), &status));
            characterRules()->setText(m_icuText.get(), status);
        }
        return characterRules();
    }

    QStringView m_text;
    std::unique_ptr<UText, TextCloser> m_icuText;
};

} // namespace

qsizetype characterCount(QStringView text)
{
    CharacterCursor cursor(text);
    qsizetype count = 0;
    for (qsizetype position = 0; position < text.size(); position = cursor.next(position))
        ++count;
    return count;
}

QStringView firstCharacters(QStringView text, qsizetype count)
{
    CharacterCursor cursor(text);
    qsizetype end = 0;
    for (; count > 0 && end < text.size(); --count)
        end = cursor.next(end);
    return text.first(end);
}

QStringView lastCharacters(QStringView text, qsizetype count)
{
    CharacterCursor cursor(text);
    qsizetype start = text.size();
    for (; count > 0 && start > 0; --count)
        start = cursor.previous(start);
    return text.sliced(start);
}

} // namespace lumora
