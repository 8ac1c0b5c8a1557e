// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/searchableitem.h"
#include "platform/search/searcherror.h"
#include "platform/search/searchindex.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace lumora {

/// What is wanted of each item beside its identifiers ("title", "textContent", "contentDescription"; all else stays
/// null), and of how many.
struct UserQueryContext
{
    QStringList fetchAttributes;
    qsizetype maxResultCount = 0;
};

/// A question in plain words, asked of an index. Any text is one; a text without words has no results. Blocks the
/// thread that calls, and belongs to it.
class UserQuery
{
public:
    /// Reads nothing yet.
    UserQuery(std::shared_ptr<SearchIndex> index, QString queryString, UserQueryContext context);
    UserQuery(UserQuery &&) noexcept;
    UserQuery &operator=(UserQuery &&) = delete;
    ~UserQuery();

    /// The next item, the most relevant first; nothing when there are no more, which is so, too, where there is no
    /// index yet, or it is found damaged before the first item. Reads no more than this item. Throws SearchError where
    /// the index cannot be read; the query has then ended.
    std::optional<SearchableItem> next();

private:
    class Loan;
    class Hits;

    void begin();

    std::shared_ptr<SearchIndex> m_index;
    QString m_queryString;
    UserQueryContext m_context;
    bool m_hasBegun = false;
    bool m_hasGivenItems = false;
    std::optional<IndexFile::Identity> m_file; ///< that the answer comes from
    std::unique_ptr<Hits> m_hits;
};

} // namespace lumora
