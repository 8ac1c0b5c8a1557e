// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/wordfolding.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>

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

/// What Latin letters that no normalization takes apart are typed as without their keyboard; null for all others.
const char16_t *plainLetters(UChar32 character)
{
    switch (character) {
    case U'æ':
        return u"ae";
    case U'œ':
        return u"oe";
    case U'ø':
        return u"o";
    case U'ł':
        return u"l";
    case U'đ':
    case U'ð':
        return u"d";
    case U'þ':
        return u"th";
    case U'ħ':
        return u"h";
    case U'ŧ':
        return u"t";
    case U'ı':
        return u"i";
    default:
        return nullptr;
    }
}

icu::UnicodeString withoutMarks(const icu::UnicodeString &decomposed)
{
    icu::UnicodeString plain;
    for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        const UChar32 character = decomposed.char32At(i);
        if (const char16_t *letters = plainLetters(character))
            plain.append(letters, -1);
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
