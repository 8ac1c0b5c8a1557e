// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/graphemes.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace lumora {

namespace {

struct UnitRange
{
    char16_t first;
    char16_t last;
};

/// Above U+02FF, the letters and punctuation that no segmentation rule joins with one another.
constexpr std::array<UnitRange, 12> plainRanges = {{
    {0x0370, 0x0482}, // Greek, Cyrillic
    {0x048A, 0x0556}, // Cyrillic, Armenian
    {0x05D0, 0x05EA}, // Hebrew letters
    {0x0620, 0x064A}, // Arabic letters
    {0x1E00, 0x1FFE}, // Latin and Greek with accents
    {0x2010, 0x2027}, // dashes, quotation marks
    {0x2030, 0x205E}, // punctuation
    {0x3001, 0x3029}, // punctuation of ideographic scripts
    {0x3041, 0x3096}, // hiragana
    {0x30A1, 0x30FF}, // katakana
    {0x3400, 0x9FFF}, // ideographs
    {0xAC00, 0xD7A3}, // Hangul syllables
}};

constexpr auto makeStandsAloneTable()
{
    constexpr char16_t firstCombiningMark = 0x0300;
    std::array<bool, 0x10000> table{};
    std::fill_n(table.begin(), firstCombiningMark, true);
    for (const UnitRange &range : plainRanges)
        std::fill(table.begin() + range.first, table.begin() + range.last + 1, true);
    return table;
}

/// Code units that are a whole character, whatever stands beside them, as long as that is one of them too (but for CR
/// LF). Nearly all text consists of them, and the segmentation rules need not be asked.
constexpr std::array<bool, 0x10000> standsAlone = makeStandsAloneTable();

inline bool isCertainBoundary(QChar before, QChar after)
{
    return standsAlone[before.unicode()] && standsAlone[after.unicode()] && !(before == u'\r' && after == u'\n');
}

/// How many code units are looked at in one go.
constexpr qsizetype strideSize = 32;

/// Whether all of the text's first stride are characters of their own, whatever they are beside: Latin letters and the
/// like. Written such that the compiler makes wide instructions of it.
inline bool isPlainStride(QStringView text)
{
    constexpr char16_t firstCombiningMark = 0x0300;
    const char16_t *const units = text.utf16();
    unsigned others = 0;
    for (qsizetype i = 0; i < strideSize; ++i)
        others |= unsigned(units[i] >= firstCombiningMark) | unsigned(units[i] == u'\r');
    return others == 0;
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
/// together, and shows it no more than that stretch.
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
        if (isBoundary(position + 1))
            return position + 1;
        if (position < m_shownFrom || position >= m_shownTo)
            showStretch(position, endOfStretch(position));
        return m_shownFrom + characterRules()->following(int32_t(position - m_shownFrom));
    }

    /// The boundary before position, which is above 0.
    qsizetype previous(qsizetype position)
    {
        if (isBoundary(position - 1))
            return position - 1;
        if (const qsizetype flagStart = startOfFlag(position); flagStart > 0)
            return flagStart;
        if (position <= m_shownFrom || position > m_shownTo)
            showStretch(startOfStretch(position), position);
        return m_shownFrom + characterRules()->preceding(int32_t(position - m_shownFrom));
    }

private:
    static constexpr qsizetype longestStretch = 64; // code units; beyond it, ICU gets the whole text
    static constexpr qsizetype indicatorSize = 2;   // code units

    /// Certainly; where it says no, the rules decide.
    bool isBoundary(qsizetype position) const
    {
        return position == 0 || position == m_text.size() || isCertainBoundary(m_text[position - 1], m_text[position]);
    }

    /// Flags are pairs of regional indicators, and only the start of a run of them tells which are pairs. The run is
    /// measured once here; ICU would walk back to its start again and again. 0 where ICU is to decide: outside of a
    /// run, and at its first pair, which may belong to what stands before it.
    qsizetype startOfFlag(qsizetype position)
    {
        if (!isRegionalIndicatorBefore(position))
            return 0;
        if (position <= m_flagsFrom || position > m_flagsTo) {
            m_flagsTo = position;
            m_flagsFrom = position;
            while (isRegionalIndicatorBefore(m_flagsFrom))
                m_flagsFrom -= indicatorSize;
        }
        const qsizetype indicators = (position - m_flagsFrom) / indicatorSize;
        return indicators > 2 ? position - indicatorSize * (indicators % 2 == 0 ? 2 : 1) : 0;
    }

    bool isRegionalIndicatorBefore(qsizetype position) const
    {
        return position >= indicatorSize && m_text[position - 2] == QChar(0xD83C) &&
               m_text[position - 1] >= QChar(0xDDE6) && m_text[position - 1] <= QChar(0xDDFF);
    }

    qsizetype endOfStretch(qsizetype start) const
    {
        qsizetype end = start + 1;
        while (!isBoundary(end) && end - start <= longestStretch)
            ++end;
        return end;
    }

    qsizetype startOfStretch(qsizetype end) const
    {
        qsizetype start = end - 1;
        while (!isBoundary(start) && end - start <= longestStretch)
            --start;
        return start;
    }

    void showStretch(qsizetype from, qsizetype to)
    {
        const bool isShort = to - from <= longestStretch;
        m_shownFrom = isShort ? from : 0;
        m_shownTo = isShort ? to : m_text.size();
        UErrorCode status = U_ZERO_ERROR;
        m_icuText.reset(
            utext_openUChars(m_icuText.release(), m_text.utf16() + m_shownFrom, m_shownTo - m_shownFrom, &status));
        characterRules()->setText(m_icuText.get(), status);
    }

    QStringView m_text;
    std::unique_ptr<UText, TextCloser> m_icuText;
    qsizetype m_shownFrom = 0;
    qsizetype m_shownTo = 0;
    qsizetype m_flagsFrom = 0;
    qsizetype m_flagsTo = 0;
};

} // namespace

namespace {

constexpr qsizetype mostUnitsPerCharacter = 32;
constexpr qsizetype uncounted = std::numeric_limits<qsizetype>::max();

struct Walked
{
    qsizetype position; ///< where the walk ended
    qsizetype count;    ///< of the characters on the way
};

/// From the text's start to behind so many characters, or to its end.
Walked walkForward(QStringView text, qsizetype most)
{
    CharacterCursor cursor(text);
    Walked walked{0, 0};
    while (walked.position < text.size() && walked.count < most) {
        const qsizetype stride = std::min({strideSize, text.size() - walked.position, most - walked.count});
        const qsizetype end = walked.position + stride;
        // What follows a stride may belong to its last unit.
        if (stride == strideSize && isPlainStride(text.sliced(walked.position)))
            walked = {end - 1, walked.count + stride - 1};
        for (; walked.position < end && walked.count < most; ++walked.count)
            walked.position = cursor.next(walked.position);
    }
    return walked;
}

/// From the text's end to before so many characters, or to its start.
qsizetype walkBackward(QStringView text, qsizetype most)
{
    CharacterCursor cursor(text);
    Walked walked{text.size(), 0};
    while (walked.position > 0 && walked.count < most) {
        const qsizetype stride = std::min({strideSize, walked.position, most - walked.count});
        const qsizetype start = walked.position - stride;
        if (stride == strideSize && isPlainStride(text.sliced(start)))
            walked = {start + 1, walked.count + stride - 1};
        for (; walked.position > start && walked.count < most; ++walked.count)
            walked.position = cursor.previous(walked.position);
    }
    return walked.position;
}

/// Without the half of a surrogate pair at either end.
QStringView withoutHalves(QStringView text)
{
    if (!text.isEmpty() && text.front().isLowSurrogate())
        text = text.sliced(1);
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    return text;
}

} // namespace

qsizetype characterCount(QStringView text)
{
    return walkForward(text, uncounted).count;
}

QStringView firstCharacters(QStringView text, qsizetype count)
{
    return text.size() <= count ? text : text.first(walkForward(text, count).position);
}

QStringView lastCharacters(QStringView text, qsizetype count)
{
    return text.size() <= count ? text : text.sliced(walkBackward(text, count));
}

QStringView firstCharactersBounded(QStringView text, qsizetype count)
{
    const qsizetype most = count * mostUnitsPerCharacter;
    if (text.size() <= most)
        return firstCharacters(text, count);
    const QStringView within = firstCharacters(text.first(most), count);
    const qsizetype cut = within.size() < most ? 0 : lastCharacters(within, 1).size(); // it may go on behind the bound
    return cut == most ? withoutHalves(within) : within.chopped(cut);
}

QStringView lastCharactersBounded(QStringView text, qsizetype count)
{
    const qsizetype most = count * mostUnitsPerCharacter;
    if (text.size() <= most)
        return lastCharacters(text, count);
    const QStringView within = lastCharacters(text.last(most), count);
    const qsizetype cut = within.size() < most ? 0 : firstCharacters(within, 1).size();
    return cut == most ? withoutHalves(within) : within.sliced(cut);
}

} // namespace lumora
