// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/userquery.h"

#include <QFuture>
#include <QStringList>

#include <memory>

namespace lumora {

/// The identifiers of what a question finds, best first.
inline QStringList found(const std::shared_ptr<SearchIndex> &index, const QString &question, qsizetype most = 1000)
{
    UserQuery query(index, question, {{}, most});
    QStringList identifiers;
    while (const std::optional<SearchableItem> item = query.next())
        identifiers.append(item->uniqueIdentifier);
    return identifiers;
}

/// Waits for the end of a change. Its failure's description; null where it succeeded.
inline QString failureOf(const QFuture<SearchIndex::Outcome> &change)
{
    const SearchIndex::Outcome outcome = change.result();
    return outcome ? outcome->description : QString();
}

inline QString failureOfAdding(const std::shared_ptr<SearchIndex> &index, const QString &identifier,
                               const QString &text)
{
    return failureOf(index->indexSearchableItems({{.uniqueIdentifier = identifier, .textContent = text}}));
}

} // namespace lumora
