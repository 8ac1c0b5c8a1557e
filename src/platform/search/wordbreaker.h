// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lumora {

/// Takes one word, as UTF-8, valid during the call only. Says whether it wants more.
using WordSink = std::function<bool(std::string_view word)>;

/// Finds the words of a text in any language, also of those that are written without spaces. Used by one thread at a
/// time.
class WordBreaker
{
public:
    WordBreaker();

    /// Gives every word to the sink, in order, folded (wordfolding.h), and an irregular English form as the word that
    /// it is a form of. What punctuation joins is several words. A very long word is cut.
    void forEachWord(QStringView text, const WordSink &sink);

private:
    bool takeFolded(const WordSink &sink);
    bool give(int32_t start, int32_t end, const WordSink &sink);

    std::unique_ptr<icu::BreakIterator> m_rules;
    icu::UnicodeString m_piece; ///< what lies between two boundaries
    std::string m_word;
};

} // namespace lumora
