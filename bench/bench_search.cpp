// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// A question to the index of a large and of a small library, against plain FTS5 with the same words and rows, and
// against reading the documents themselves, as is done where the index knows nothing.

#include "features/documentsearchtool.h"
#include "platform/search/userquery.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <sqlite3.h>
#include <vector>

using namespace lumora;

namespace {

constexpr int largeLibrary = 10'000; // documents
constexpr int smallLibrary = 1'000;
constexpr qsizetype documentSize = 20'000; // bytes
constexpr int documentsPerCall = 500;
constexpr qsizetype wantedResults = 8;
constexpr int vocabularySize = 20'000;

/// Places of words in the vocabulary, which say how frequent they are. A question as people ask it: a word of most of
/// the documents, one of one in ten, and one of one in fifty.
constexpr std::array ordinaryWords = {300, 3'000, 15'000};
/// One that few documents answer, so that finding out is nearly all there is to do.
constexpr std::array rareWords = {15'000, 17'000, 19'000};

using Places = std::array<int, 3>;

QString word(int place)
{
    constexpr std::array syllables = {"ba", "de", "fi", "go", "lu", "ma", "ne", "po", "ri", "ta"};
    QString text;
    for (int rest = place + int(syllables.size()); rest > 0; rest /= int(syllables.size()))
        text += QLatin1String(syllables[size_t(rest) % syllables.size()]);
    return text;
}

/// A word that only this document has.
QString mark(int number)
{
    return QStringLiteral("mark%1").arg(number);
}

/// Words are as frequent as in prose: the n-th most frequent one is there an n-th as often as the first.
class Prose
{
public:
    Prose()
    {
        double sum = 0;
        for (int place = 0; place < vocabularySize; ++place) {
            m_words.push_back(word(place));
            m_sums.push_back(sum += 1.0 / (place + 1));
        }
    }

    SearchableItem document(int number)
    {
        SearchableItem item{.uniqueIdentifier = QString::number(number), .domainIdentifier = QStringLiteral("bench")};
        item.title = next() + u' ' + next() + QStringLiteral(".txt");
        item.textContent.reserve(documentSize + 32);
        while (item.textContent.size() < documentSize)
            item.textContent += next() + (m_random.bounded(10) == 0 ? QStringLiteral(". ") : QStringLiteral(" "));
        item.textContent += mark(number);
        item.contentDescription = item.textContent.first(600);
        return item;
    }

private:
    const QString &next()
    {
        const auto found = std::lower_bound(m_sums.begin(), m_sums.end(), m_random.generateDouble() * m_sums.back());
        return m_words[size_t(found - m_sums.begin())];
    }

    std::vector<QString> m_words;
    std::vector<double> m_sums;
    QRandomGenerator m_random{1};
};

void require(bool isDone)
{
    if (!isDone)
        qFatal("the benchmark's index cannot be made");
}

/// What a plain program does: a table of FTS5 as it comes, open all the time, and one statement.
class PlainIndex
{
public:
    explicit PlainIndex(const QString &path)
        : m_database(created(path))
        , m_insert(prepare("INSERT INTO items VALUES (?1, ?2, ?3)"))
        , m_query(prepare("SELECT identifier, title, textContent FROM items WHERE items MATCH ?1 "
                          "AND rank MATCH 'bm25(1.0, 10.0, 1.0)' ORDER BY rank LIMIT ?2"))
    {
    }
    PlainIndex(const PlainIndex &) = delete;
    PlainIndex &operator=(const PlainIndex &) = delete;
    ~PlainIndex()
    {
        sqlite3_finalize(m_insert);
        sqlite3_finalize(m_query);
        sqlite3_close(m_database);
    }

    void add(const QList<SearchableItem> &items)
    {
        execute(m_database, "BEGIN");
        for (const SearchableItem &item : items) {
            int parameter = 0;
            for (const QString &text : {item.uniqueIdentifier, item.title, item.textContent})
                bind(m_insert, ++parameter, text);
            require(sqlite3_step(m_insert) == SQLITE_DONE && sqlite3_reset(m_insert) == SQLITE_OK);
        }
        execute(m_database, "COMMIT");
    }

    qsizetype query(const QString &expression)
    {
        bind(m_query, 1, expression);
        sqlite3_bind_int64(m_query, 2, wantedResults);
        qsizetype results = 0;
        for (; sqlite3_step(m_query) == SQLITE_ROW; ++results) {
            for (int column = 0; column < 3; ++column)
                benchmark::DoNotOptimize(
                    QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(m_query, column)),
                                      sqlite3_column_bytes(m_query, column)));
        }
        sqlite3_reset(m_query);
        return results;
    }

private:
    static sqlite3 *created(const QString &path)
    {
        sqlite3 *database = nullptr;
        require(sqlite3_open(QFile::encodeName(path).constData(), &database) == SQLITE_OK);
        execute(database, "CREATE VIRTUAL TABLE items USING fts5 (identifier UNINDEXED, title, textContent, "
                          "tokenize = unicode61)");
        return database;
    }

    static void execute(sqlite3 *database, const char *sql)
    {
        require(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    sqlite3_stmt *prepare(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        require(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    }

    static void bind(sqlite3_stmt *statement, int parameter, const QString &text)
    {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(statement, parameter, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }

    sqlite3 *m_database;
    sqlite3_stmt *m_insert;
    sqlite3_stmt *m_query;
};

/// The same documents in both, made once, in the folder in which the benchmark runs.
struct Library
{
    explicit Library(int documents)
    {
        Prose prose;
        for (int first = 0; first < documents; first += documentsPerCall) {
            QList<SearchableItem> items;
            for (int i = 0; i < documentsPerCall; ++i)
                items.append(prose.document(first + i));
            require(!ours->indexSearchableItems(items).result());
            plain.add(items);
        }
    }

    QTemporaryDir folder{QStringLiteral("bench-XXXXXX")};
    std::shared_ptr<SearchIndex> ours = std::make_shared<SearchIndex>(folder.filePath(QStringLiteral("ours")));
    PlainIndex plain{folder.filePath(QStringLiteral("plain"))};
};

/// The stored copies of the large library, and an index that has none of them.
class StoredDocuments
{
public:
    StoredDocuments()
    {
        Prose prose;
        for (int number = 0; number < largeLibrary; ++number) {
            const SearchableItem item = prose.document(number);
            const QString name = QString::number(number) + QStringLiteral(".txt");
            QFile file(m_folder.filePath(name));
            require(file.open(QIODevice::WriteOnly) && file.write(item.textContent.toUtf8()) > 0);
            m_tool.documents.append({.name = item.title, .filename = name});
        }
        m_tool.directory = m_folder.path();
        m_tool.index = std::make_shared<SearchIndex>(m_folder.filePath(QStringLiteral("index")));
    }

    QString search(const QString &phrase) const { return m_tool.call({phrase}, {}); }

private:
    QTemporaryDir m_folder{QStringLiteral("bench-XXXXXX")};
    DocumentSearchTool m_tool;
};

Library &large()
{
    static Library library(largeLibrary);
    return library;
}

Library &small()
{
    static Library library(smallLibrary);
    return library;
}

void ask(benchmark::State &state, Library &library, const Places &words)
{
    const QString question =
        QStringLiteral("What does the %1 say about %2 and %3?").arg(word(words[0]), word(words[1]), word(words[2]));
    const UserQueryContext context{{QStringLiteral("title"), QStringLiteral("textContent")}, wantedResults};
    for (auto _ : state) {
        UserQuery query(library.ours, question, context);
        qsizetype results = 0;
        while (query.next())
            ++results;
        if (results != wantedResults)
            state.SkipWithError("not found");
    }
}

void askPlainly(benchmark::State &state, Library &library, const Places &words)
{
    const QString expression = QStringLiteral("%1 OR %2 OR %3").arg(word(words[0]), word(words[1]), word(words[2]));
    for (auto _ : state) {
        if (library.plain.query(expression) != wantedResults)
            state.SkipWithError("not found");
    }
}

void questionToLargeLibrary(benchmark::State &state)
{
    ask(state, large(), ordinaryWords);
}
BENCHMARK(questionToLargeLibrary)->Unit(benchmark::kMillisecond);

void questionToSmallLibrary(benchmark::State &state)
{
    ask(state, small(), ordinaryWords);
}
BENCHMARK(questionToSmallLibrary)->Unit(benchmark::kMillisecond);

void plainQuestion(benchmark::State &state)
{
    askPlainly(state, large(), ordinaryWords);
}
BENCHMARK(plainQuestion)->Unit(benchmark::kMillisecond);

void rareQuestion(benchmark::State &state)
{
    ask(state, large(), rareWords);
}
BENCHMARK(rareQuestion)->Unit(benchmark::kMillisecond);

void plainRareQuestion(benchmark::State &state)
{
    askPlainly(state, large(), rareWords);
}
BENCHMARK(plainRareQuestion)->Unit(benchmark::kMillisecond);

void markInIndex(benchmark::State &state)
{
    const UserQueryContext context{{QStringLiteral("title"), QStringLiteral("textContent")}, wantedResults};
    for (auto _ : state) {
        if (!UserQuery(large().ours, mark(largeLibrary - 1), context).next())
            state.SkipWithError("not found");
    }
}
BENCHMARK(markInIndex)->Unit(benchmark::kMillisecond);

void markByReading(benchmark::State &state)
{
    static const StoredDocuments documents;
    for (auto _ : state) {
        if (!documents.search(mark(largeLibrary - 1)).startsWith(QStringLiteral("Document: ")))
            state.SkipWithError("not found");
    }
}
BENCHMARK(markByReading)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
