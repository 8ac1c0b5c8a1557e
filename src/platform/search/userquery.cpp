// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/userquery.h"

#include "platform/search/databaseerror.h"
#include "platform/search/question.h"

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

/// A word in more than so many documents, and in more than a quarter of all, says little about any of them.
constexpr qint64 commonDocuments = 1000;
constexpr qint64 commonShare = 4;

/// Whether a phrase is that common. How many documents hold it is added up in the widest.
class CommonPhrases
{
public:
    explicit CommonPhrases(Database &database)
        : m_most(std::max(commonDocuments, database.number("SELECT max(id) FROM items") / commonShare))
        , m_count(database, "SELECT count(*) FROM (SELECT 1 FROM words WHERE words MATCH ?1 LIMIT ?2)")
    {
    }

    bool contain(const QByteArray &phrase)
    {
        m_count.bind(1, phrase);
        m_count.bind(2, m_most + 1);
        m_count.step();
        const qint64 holding = m_count.number(0);
        m_count.run();
        if (holding > m_most)
            return true;
        m_mostOfOthers = std::max(m_mostOfOthers, holding);
        return false;
    }

    /// The most documents that hold one of the phrases that were found not to be common.
    qint64 mostOfOthers() const { return m_mostOfOthers; }

private:
    qint64 m_most;
    Statement m_count;
    qint64 m_mostOfOthers = 0;
};

/// Common words bring in no document by themselves where there are rarer ones that bring in enough: otherwise they
/// would make every document a result, and every document would have to be ranked.
Match matchFor(Database &database, const QList<QByteArray> &phrases, qsizetype wanted)
{
    CommonPhrases common(database);
    QList<QByteArray> chosen = phrases;
    const auto firstCommon = std::stable_partition(
        chosen.begin(), chosen.end(), [&common](const QByteArray &phrase) { return !common.contain(phrase); });
    const QList<QByteArray> others(firstCommon, chosen.end());
    chosen.erase(firstCommon, chosen.end());
    return others.isEmpty() || common.mostOfOthers() < wanted ? matchAny(phrases) : matchAny(chosen, others);
}

} // namespace

/// The hits of one question, in order.
class UserQuery::Hits
{
public:
    Hits(Database database, const QList<QByteArray> &phrases, const UserQueryContext &context)
        : m_database(std::move(database))
        , m_rows(m_database, "SELECT items.identifier, items.domain, iif(?4, items.title, NULL), "
                             "iif(?5, items.contentDescription, NULL), iif(?6, items.textContent, NULL) "
                             "FROM words CROSS JOIN items ON items.id = words.rowid "
                             "WHERE words MATCH ?1 AND words.rank MATCH ?2 ORDER BY words.rank LIMIT ?3")
    {
        const Match match = matchFor(m_database, phrases, context.maxResultCount);
        m_rows.bind(1, match.expression);
        m_rows.bind(2, match.ranking);
        m_rows.bind(3, qint64(context.maxResultCount));
        int parameter = 3;
        for (const QString &attribute :
             {QStringLiteral("title"), QStringLiteral("contentDescription"), QStringLiteral("textContent")})
            m_rows.bind(++parameter, qint64(context.fetchAttributes.contains(attribute)));
    }

    std::optional<SearchableItem> next()
    {
        if (!m_rows.step())
            return std::nullopt;
        return SearchableItem{.uniqueIdentifier = m_rows.text(0),
                              .domainIdentifier = m_rows.text(1),
                              .title = m_rows.text(2),
                              .textContent = m_rows.text(4),
                              .contentDescription = m_rows.text(3)};
    }

private:
    Database m_database;
    Statement m_rows;
};

UserQuery::UserQuery(std::shared_ptr<SearchIndex> index, QString queryString, UserQueryContext context)
    : m_index(std::move(index))
    , m_queryString(std::move(queryString))
    , m_context(std::move(context))
{
}

UserQuery::UserQuery(UserQuery &&) noexcept = default;
UserQuery &UserQuery::operator=(UserQuery &&) noexcept = default;
UserQuery::~UserQuery() = default;

void UserQuery::begin()
{
    const QList<QByteArray> phrases = questionPhrases(m_queryString);
    if (phrases.isEmpty() || m_context.maxResultCount <= 0)
        return;
    m_removals = m_index->m_file.removals();
    if (std::optional<Database> database = m_index->m_file.openForReading())
        m_hits = std::make_unique<Hits>(std::move(*database), phrases, m_context);
}

std::optional<SearchableItem> UserQuery::next()
{
    try {
        if (!std::exchange(m_hasBegun, true))
            begin();
        std::optional<SearchableItem> item = m_hits ? m_hits->next() : std::nullopt;
        if (!item)
            m_hits.reset();
        return item;
    } catch (const DatabaseError &error) {
        m_hits.reset();
        if (error.kind() != DatabaseError::Kind::broken)
            throw SearchError(error.description());
        m_index->removeBrokenLater(m_removals);
        return std::nullopt;
    }
}

} // namespace lumora
