// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/indexfile.h"
#include "platform/search/searchableitem.h"
#include "platform/search/searcherror.h"
#include "platform/search/workqueue.h"

#include <QFuture>
#include <QList>
#include <QStringList>

#include <atomic>
#include <functional>
#include <optional>

namespace lumora {

/// A full-text index in one file, which survives the program: every change is made whole and is on the disk when its
/// future ends, or not made at all, also after a crash. A file that is damaged is replaced by an empty index as soon as
/// that is noticed. Others may use the same file at the same time.
///
/// Any thread may call. Queries are UserQuery.
class SearchIndex
{
public:
    /// Nothing where it succeeded.
    using Outcome = std::optional<SearchFailure>;

    /// path: absolute. Touches no file yet; the file comes into being with the first item.
    explicit SearchIndex(QString path);
    SearchIndex(const SearchIndex &) = delete;
    SearchIndex &operator=(const SearchIndex &) = delete;
    /// Waits for the change that is being made, which takes seconds at most. Of those behind it, deletions are made and
    /// additions are not; these end with a failure. Not to be called by a continuation that runs on the index's thread.
    ~SearchIndex();

    // Changes are made one after another in the order of the calls, on a thread of the index's own. Every future ends
    // with a result; it is never cancelled by the index.

    /// Stores all items or none. An item replaces the one with the same identifier.
    QFuture<Outcome> indexSearchableItems(QList<SearchableItem> items);
    /// Identifiers that the index does not have are passed over.
    QFuture<Outcome> deleteSearchableItems(QStringList uniqueIdentifiers);

private:
    friend class UserQuery;
    using Change = std::function<void(Database &)>;

    QFuture<Outcome> enqueue(std::function<Outcome()> work);
    Outcome make(const Change &change, IndexFile::IfMissing ifMissing);
    void tryToMake(const Change &change, IndexFile::IfMissing ifMissing) const;
    /// removalsThen: what IndexFile::removals() was when the file was opened.
    void removeBrokenLater(int removalsThen);

    IndexFile m_file;
    std::atomic<bool> m_isClosing = false;
    WorkQueue m_worker; ///< last, so that it ends first
};

} // namespace lumora
