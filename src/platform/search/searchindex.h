// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/indexfile.h"
#include "platform/search/searchableitem.h"
#include "platform/search/searcherror.h"
#include "platform/search/workqueue.h"

#include <QFuture>
#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <optional>
#include <stop_token>

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
    /// Closes it, and waits for the change that is being made, which takes seconds at most. Not to be called by a
    /// continuation that runs on the index's thread.
    ~SearchIndex();

    /// From now on no change takes long: one that has to find all words anew first fails at once. Of those that wait,
    /// other deletions are made, and additions end with a failure. Queries go on.
    void close();

    // Changes are made one after another in the order of the calls, on a thread of the index's own. Every future ends
    // with a result; it is never cancelled by the index.

    /// Stores all items or none. An item replaces the one with the same identifier. stop makes it fail where it has not
    /// begun, or would take long.
    QFuture<Outcome> indexSearchableItems(QList<SearchableItem> items, std::stop_token stop = {});
    /// Identifiers that the index does not have are passed over.
    QFuture<Outcome> deleteSearchableItems(QStringList uniqueIdentifiers);

private:
    friend class UserQuery;
    using Change = std::function<void(Database &)>;

    QFuture<Outcome> enqueue(std::function<Outcome()> work);
    Outcome make(const Change &change, IndexFile::IfMissing ifMissing, const std::stop_token &stop);
    void tryToMake(const Change &change, IndexFile::IfMissing ifMissing, const std::stop_token &stop) const;
    void removeBrokenLater(const IndexFile::Identity &broken);

    IndexFile m_file;
    std::atomic<bool> m_isClosing = false;
    WorkQueue m_worker; ///< last, so that it ends first
};

} // namespace lumora
