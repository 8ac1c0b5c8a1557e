// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/wordfolding.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>

#include <algorithm>
#include <array>

namespace lumora {

namespace {

/// Accents, vowel points and vowel signs of scripts that are read without them, the Arabic letter that only stretches,
/// and the marks inside Hebrew abbreviations. The Japanese sound marks are not among them.
const icu::UnicodeSet &droppedCharacters()
{
    static const icu::UnicodeSet set = [] {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeSet marks(uR"([[[:Mn:]&[[:Zinh:][:Grek:][:Cyrl:][:Hebr:][:Arab:][:Syrc:]]]-[\u3099\u309A]])",
                              status);
        for (const UChar32 character : {0x0640, 0x05F3, 0x05F4, int('"')})
            marks.add(character);
        marks.freeze();
        return marks;
    }();
    return set;
}

struct Replacement
{
    UChar32 letter;
    const char16_t *plain;
};

/// What Latin letters that no normalization takes apart are typed as without their keyboard.
constexpr std::array<Replacement, 10> plainLetters{{
    {U'æ', u"ae"},
    {U'œ', u"oe"},
    {U'ø', u"o"},
    {U'ł', u"l"},
    {U'đ', u"d"},
    {U'ð', u"d"},
    {U'þ', u"th"},
    {U'ħ', u"h"},
    {U'ŧ', u"t"},
    {U'ı', u"i"},
}};

icu::UnicodeString withoutMarks(const icu::UnicodeString &decomposed)
{
    icu::UnicodeString plain;
    for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        const UChar32 character = decomposed.char32At(i);
        const auto *const known = std::ranges::find(plainLetters, character, &Replacement::letter);
        if (known != plainLetters.end())
            plain.append(known->plain, -1);
        else if (!droppedCharacters().contains(character))
            plain.append(character);
    }
    return plain;
}

bool foldAscii(icu::UnicodeString &word)
{
    constexpr char16_t pastAscii = 0x80;
    const int32_t length = word.length();
    for (int32_t i = 0; i < length; ++i) {
        if (word[i] >= pastAscii)
            return false;
    }
    for (int32_t i = 0; i < length; ++i) {
        if (const char16_t unit = word[i]; unit >= u'A' && unit <= u'Z')
            word.setCharAt(i, char16_t(unit - u'A' + u'a'));
    }
    return true;
}

} // namespace

void foldWord(icu::UnicodeString &word)
{
    if (foldAscii(word))
        return;
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *casefold = icu::Normalizer2::getNFKCCasefoldInstance(status);
    const icu::Normalizer2 *decompose = icu::Normalizer2::getNFDInstance(status);
    const icu::Normalizer2 *compose = icu::Normalizer2::getNFCInstance(status);
    const icu::UnicodeString plain = withoutMarks(decompose->normalize(casefold->normalize(word, status), status));
    word = compose->normalize(plain, status);
    if (U_FAILURE(status)) // only where memory is short
        throw std::bad_alloc();
}

bool isWordCharacter(char32_t character)
{
    return (U_MASK(u_charType(UChar32(character))) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

} // namespace lumora
