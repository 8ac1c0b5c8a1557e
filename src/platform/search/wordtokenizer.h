// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

struct fts5_api;

namespace lumora {

/// Adds the tokenizer "lumora" to a connection: the words of WordBreaker. In a query, each phrase is one such word
/// already. Returns a result code of SQLite.
int addWordTokenizer(fts5_api &functions);

} // namespace lumora
