// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/searchindex.h"

#include "platform/search/databaseerror.h"

#include <QPromise>

#include <memory>
#include <system_error>

namespace lumora {

namespace {

constexpr std::chrono::milliseconds writingPatience{3000};
constexpr std::chrono::milliseconds closingPatience{100};

void deleteItems(Database &database, const QStringList &identifiers)
{
    Statement statement(database, "DELETE FROM items WHERE identifier = ?1");
    for (const QString &identifier : identifiers) {
        statement.bind(1, identifier);
        statement.run();
    }
}

void addItems(Database &database, const QList<SearchableItem> &items)
{
    Statement statement(database, "INSERT INTO items (identifier, domain, title, contentDescription, textContent) "
                                  "VALUES (?1, ?2, ?3, ?4, ?5)");
    for (const SearchableItem &item : items) {
        deleteItems(database, {item.uniqueIdentifier});
        int parameter = 0;
        for (const QString &text :
             {item.uniqueIdentifier, item.domainIdentifier, item.title, item.contentDescription, item.textContent})
            statement.bind(++parameter, text);
        statement.run();
    }
}

} // namespace

SearchIndex::SearchIndex(QString path)
    : m_file(std::move(path))
{
}

SearchIndex::~SearchIndex()
{
    close();
}

void SearchIndex::close()
{
    m_isClosing = true;
}

QFuture<SearchIndex::Outcome> SearchIndex::indexSearchableItems(QList<SearchableItem> items, std::stop_token stop)
{
    return enqueue([this, items = std::move(items), stop = std::move(stop)]() -> Outcome {
        if (m_isClosing || stop.stop_requested())
            return SearchFailure{DatabaseError::closed().description()};
        return make([&items](Database &database) { addItems(database, items); }, IndexFile::IfMissing::create, stop);
    });
}

QFuture<SearchIndex::Outcome> SearchIndex::deleteSearchableItems(QStringList uniqueIdentifiers)
{
    return enqueue([this, identifiers = std::move(uniqueIdentifiers)] {
        return make([&identifiers](Database &database) { deleteItems(database, identifiers); },
                    IndexFile::IfMissing::leave, {});
    });
}

QFuture<SearchIndex::Outcome> SearchIndex::enqueue(std::function<Outcome()> work)
{
    const auto promise = std::make_shared<QPromise<Outcome>>();
    promise->start();
    const auto finish = [promise](const Outcome &outcome) {
        promise->addResult(outcome);
        promise->finish();
    };
    try {
        m_worker.add([finish, work = std::move(work)] { finish(work()); });
    } catch (const std::system_error &) {
        finish(SearchFailure{DatabaseError::noThread().description()});
    }
    return promise->future();
}

SearchIndex::Outcome SearchIndex::make(const Change &change, IndexFile::IfMissing ifMissing,
                                       const std::stop_token &stop)
{
    try {
        const std::optional<IndexFile::Identity> found = m_file.identity();
        try {
            twiceIfBroken([&] { tryToMake(change, ifMissing, stop); });
        } catch (const DatabaseError &error) {
            if (error.kind() != DatabaseError::Kind::broken || !found)
                throw;
            m_file.removeBroken(*found);
            tryToMake(change, ifMissing, stop);
        }
        return std::nullopt;
    } catch (const DatabaseError &error) {
        return SearchFailure{error.description()};
    } catch (const std::bad_alloc &) {
        return SearchFailure{DatabaseError::outOfMemory().description()};
    }
}

void SearchIndex::tryToMake(const Change &change, IndexFile::IfMissing ifMissing, const std::stop_token &stop) const
{
    std::optional<Database> database =
        m_file.openForWriting(ifMissing, m_isClosing ? closingPatience : writingPatience,
                              [this, &stop] { return m_isClosing || stop.stop_requested(); });
    if (!database)
        return;
    Transaction transaction(*database, Transaction::Kind::writing);
    change(*database);
    transaction.commit();
}

void SearchIndex::removeBrokenLater(const IndexFile::Identity &broken)
{
    const auto remove = [this, broken] {
        try {
            m_file.removeBroken(broken);
        } catch (const DatabaseError &) {
            // A change would tell the user; who asks has nobody to tell.
        }
    };
    try {
        m_worker.add(remove);
    } catch (const std::system_error &) {
        // Whoever asks or changes something next removes it.
    }
}

} // namespace lumora
