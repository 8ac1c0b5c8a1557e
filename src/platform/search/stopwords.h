// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string_view>

namespace lumora {

/// Whether a word says next to nothing about what a question is about: articles, pronouns, prepositions and the like,
/// of languages that many people write. A word, folded (wordfolding.h), as UTF-8.
bool isStopWord(std::string_view word);

} // namespace lumora
