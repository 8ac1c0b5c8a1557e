// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

struct fts5_api;

namespace lumora {

/// Adds the ranking function "relevance" to a connection, to be used for the rank of FTS5: the best document has the
/// least number. Its parameters: how many of the expression's phrases are passed over, from the first; the weight of
/// each column; for each phrase that is not passed over, how many documents hold it. Returns a result code of SQLite.
///
/// It is BM25 with weights of words that are never below zero, so that it serves libraries of three documents as well,
/// times the share of the phrases that the document holds.
int addRelevance(fts5_api &functions);

} // namespace lumora
