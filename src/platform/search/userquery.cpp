// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/userquery.h"

#include "platform/search/databaseerror.h"
#include "platform/search/question.h"

#include <utility>

namespace lumora {

namespace {

QList<CountedPhrase> counted(Database &database, const QList<QByteArray> &phrases)
{
    Statement count(database, "SELECT count(*) FROM words WHERE words MATCH ?1");
    QList<CountedPhrase> result;
    for (const QByteArray &phrase : phrases) {
        count.bind(1, phrase);
        count.step();
        result.append({phrase, count.number(0)});
        count.run();
    }
    return result;
}

/// The items of the best documents, by their row.
QList<qint64> bestRows(Database &database, const QList<QByteArray> &phrases, qint64 wanted)
{
    const Transaction allOfOneMoment(database, Transaction::Kind::reading);
    const qint64 documents = database.number("SELECT max(id) FROM items"); // or a few less
    const Match match = matchFor(counted(database, phrases), documents, wanted);
    Statement statement(database,
                        "SELECT rowid FROM words WHERE words MATCH ?1 AND rank MATCH ?2 ORDER BY rank LIMIT ?3");
    statement.bind(1, match.expression);
    statement.bind(2, match.ranking);
    statement.bind(3, wanted);
    QList<qint64> rows;
    while (statement.step())
        rows.append(statement.number(0));
    return rows;
}

} // namespace

/// A reader that is given back, unless something has gone wrong with it.
class UserQuery::Loan
{
public:
    Loan(IndexFile &file, IndexFile::Reader reader)
        : m_file(file)
        , m_reader(std::move(reader))
    {
    }
    Loan(const Loan &) = delete;
    Loan &operator=(const Loan &) = delete;
    ~Loan()
    {
        if (m_isSound)
            m_file.giveBack(std::move(m_reader));
    }

    Database &database() { return m_reader.database; }

    /// Does what may go wrong.
    template <typename Work>
    auto use(const Work &work)
    {
        m_isSound = false;
        auto result = work();
        m_isSound = true;
        return result;
    }

private:
    IndexFile &m_file;
    IndexFile::Reader m_reader;
    bool m_isSound = true;
};

/// What one question finds. Between two calls it locks nothing, so that nobody who writes waits for it.
class UserQuery::Hits
{
public:
    Hits(IndexFile &file, IndexFile::Reader reader, const QList<QByteArray> &phrases, const UserQueryContext &context)
        : m_loan(file, std::move(reader))
        , m_rows(m_loan.use([&] { return bestRows(m_loan.database(), phrases, context.maxResultCount); }))
        , m_item(m_loan.database(),
                 "SELECT identifier, domain, iif(?2, title, NULL), iif(?3, contentDescription, NULL), "
                 "iif(?4, textContent, NULL) FROM items WHERE id = ?1")
    {
        int parameter = 1;
        for (const QString &attribute :
             {QStringLiteral("title"), QStringLiteral("contentDescription"), QStringLiteral("textContent")})
            m_item.bind(++parameter, qint64(context.fetchAttributes.contains(attribute)));
    }

    std::optional<SearchableItem> next()
    {
        std::optional<SearchableItem> item;
        while (!item && !m_rows.isEmpty())
            item = m_loan.use([&] { return twiceIfBroken([this, row = m_rows.takeFirst()] { return read(row); }); });
        return item;
    }

private:
    /// Nothing where it has been deleted since.
    std::optional<SearchableItem> read(qint64 row)
    {
        m_item.bind(1, row);
        std::optional<SearchableItem> item;
        if (m_item.step())
            item = {.uniqueIdentifier = m_item.text(0),
                    .domainIdentifier = m_item.text(1),
                    .title = m_item.text(2),
                    .textContent = m_item.text(4),
                    .contentDescription = m_item.text(3)};
        m_item.run();
        return item;
    }

    Loan m_loan; ///< first, so that it ends last
    QList<qint64> m_rows;
    Statement m_item;
};

UserQuery::UserQuery(std::shared_ptr<SearchIndex> index, QString queryString, UserQueryContext context)
    : m_index(std::move(index))
    , m_queryString(std::move(queryString))
    , m_context(std::move(context))
{
}

UserQuery::UserQuery(UserQuery &&) noexcept = default;
UserQuery::~UserQuery() = default;

void UserQuery::begin()
{
    const QList<QByteArray> phrases = questionPhrases(m_queryString);
    if (phrases.isEmpty() || m_context.maxResultCount <= 0)
        return;
    IndexFile &file = m_index->m_file;
    m_file = file.identity();
    if (std::optional<IndexFile::Reader> reader = file.openForReading())
        m_hits = std::make_unique<Hits>(file, std::move(*reader), phrases, m_context);
}

std::optional<SearchableItem> UserQuery::next()
{
    try {
        if (!std::exchange(m_hasBegun, true))
            twiceIfBroken([this] { begin(); });
        std::optional<SearchableItem> item = m_hits ? m_hits->next() : std::nullopt;
        if (!item)
            m_hits.reset();
        m_hasGivenItems = item.has_value();
        return item;
    } catch (const DatabaseError &error) {
        m_hits.reset();
        if (error.kind() != DatabaseError::Kind::broken || !m_file)
            throw SearchError(error.description());
        m_index->removeBrokenLater(*m_file);
        if (m_hasGivenItems)
            throw SearchError(error.description());
        return std::nullopt; // as of the empty index that takes its place
    }
}

} // namespace lumora
