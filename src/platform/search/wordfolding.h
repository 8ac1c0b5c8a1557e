// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <unicode/unistr.h>

#include <string>
#include <string_view>

namespace lumora {

/// The form of a word in which it is found whatever its case, its width and its diacritics: casefolded and compatible
/// (NFKC_Casefold), without the marks that readers of its script leave out at will, with plain letters for the Latin
/// ones that have a stroke or are two. Marks that make another word of it stay, as those of Thai and Japanese do.
/// The result may have other characters than those of words in it.
void foldWord(icu::UnicodeString &word);

/// Whether a character can be part of a folded word: a letter, a mark or a number.
bool isWordCharacter(char32_t character);

} // namespace lumora
