// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/wordtokenizer.h"

#include "platform/search/wordbreaker.h"

#include <QString>

#include <sqlite3.h>

namespace lumora {

namespace {

using TokenSink = int (*)(void *context, int flags, const char *token, int size, int start, int end);

int create(void * /*context*/, const char ** /*arguments*/, int /*count*/, Fts5Tokenizer **tokenizer)
{
    try {
        *tokenizer = reinterpret_cast<Fts5Tokenizer *>(std::make_unique<WordBreaker>().release());
        return SQLITE_OK;
    } catch (const std::exception &) { // nothing may be thrown through SQLite
        return SQLITE_NOMEM;
    }
}

void destroy(Fts5Tokenizer *tokenizer)
{
    const std::unique_ptr<WordBreaker> breaker(reinterpret_cast<WordBreaker *>(tokenizer));
}

int tokenize(Fts5Tokenizer *tokenizer, void *context, int flags, const char *text, int size, TokenSink sink)
{
    // Where a word lies in the text is of use for highlighting only, and not kept.
    if ((flags & FTS5_TOKENIZE_QUERY) != 0)
        return sink(context, 0, text, size, 0, 0);
    try {
        int code = SQLITE_OK;
        const QString utf16 = QString::fromUtf8(text, size);
        reinterpret_cast<WordBreaker *>(tokenizer)->forEachWord(utf16, [&](std::string_view word) {
            code = sink(context, 0, word.data(), int(word.size()), 0, 0);
            return code == SQLITE_OK;
        });
        return code;
    } catch (const std::exception &) {
        return SQLITE_NOMEM;
    }
}

} // namespace

int addWordTokenizer(fts5_api &functions)
{
    fts5_tokenizer tokenizer{create, destroy, tokenize};
    return functions.xCreateTokenizer(&functions, "lumora", nullptr, &tokenizer, nullptr);
}

} // namespace lumora
