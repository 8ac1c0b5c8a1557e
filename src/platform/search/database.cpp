// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/database.h"

#include "platform/search/databaseerror.h"
#include "platform/search/relevance.h"
#include "platform/search/wordtokenizer.h"
#include "platform/text/textrules.h"

#include <QFile>

#include <sqlite3.h>
#include <utility>

namespace lumora {

namespace {

DatabaseError lastError(sqlite3 *handle)
{
    return DatabaseError::fromCode(sqlite3_extended_errcode(handle), sqlite3_system_errno(handle));
}

/// The functions of FTS5, which it gives out by a query; null in a library that was built without it.
fts5_api *fullTextFunctions(sqlite3 *handle)
{
    fts5_api *functions = nullptr;
    sqlite3_stmt *query = nullptr;
    if (sqlite3_prepare_v2(handle, "SELECT fts5(?1)", -1, &query, nullptr) == SQLITE_OK) {
        sqlite3_bind_pointer(query, 1, static_cast<void *>(&functions), "fts5_api_ptr", nullptr);
        sqlite3_step(query);
    }
    sqlite3_finalize(query);
    return functions;
}

void addFullTextFunctions(sqlite3 *handle)
{
    fts5_api *functions = fullTextFunctions(handle);
    if (!functions)
        throw DatabaseError::fromCode(SQLITE_ERROR, 0);
    for (const int code : {addWordTokenizer(*functions), addRelevance(*functions)}) {
        if (code != SQLITE_OK)
            throw DatabaseError::fromCode(code, 0);
    }
}

} // namespace

void Database::Closer::operator()(sqlite3 *handle) const
{
    sqlite3_close_v2(handle);
}

Database::Database(const QString &path, std::chrono::milliseconds patience)
{
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &handle,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_handle.reset(handle);
    if (!handle)
        throw DatabaseError::fromCode(SQLITE_NOMEM, 0);
    if (code != SQLITE_OK)
        throw lastError(handle);
    sqlite3_busy_timeout(handle, int(patience.count()));
    addFullTextFunctions(handle);
    execute("PRAGMA cell_size_check = ON"); // a damaged page is noticed before it is used
    execute("PRAGMA temp_store = MEMORY");
}

void Database::execute(const char *sql)
{
    Statement(*this, sql).run();
}

qint64 Database::number(const char *sql)
{
    Statement statement(*this, sql);
    return statement.step() ? statement.number(0) : 0;
}

// After some errors SQLite has done so by itself, and says that there is nothing to roll back.
void Database::rollBack() noexcept
{
    sqlite3_exec(m_handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Statement::Finalizer::operator()(sqlite3_stmt *handle) const
{
    sqlite3_finalize(handle);
}

Statement::Statement(Database &database, const char *sql)
{
    sqlite3_stmt *handle = nullptr;
    const int code = sqlite3_prepare_v2(database.m_handle.get(), sql, -1, &handle, nullptr);
    m_handle.reset(handle);
    if (code == SQLITE_OK)
        return;
    sqlite3 *connection = database.m_handle.get();
    if (code != SQLITE_ERROR)
        throw lastError(connection);
    // The statement is right, so a table of the index must be missing or not what it should be.
    throw DatabaseError(DatabaseError::Kind::broken, lastError(connection).description());
}

void Statement::check(int code) const
{
    if (code != SQLITE_OK)
        throw lastError(sqlite3_db_handle(m_handle.get()));
}

void Statement::bind(int parameter, const QString &text)
{
    bind(parameter, text.isNull() ? QByteArray() : wellFormed(text).toUtf8());
}

void Statement::bind(int parameter, const QByteArray &utf8)
{
    check(utf8.isNull() ? sqlite3_bind_null(m_handle.get(), parameter)
                        : sqlite3_bind_text64(m_handle.get(), parameter, utf8.constData(), sqlite3_uint64(utf8.size()),
                                              SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bind(int parameter, qint64 number)
{
    check(sqlite3_bind_int64(m_handle.get(), parameter, number));
}

bool Statement::step()
{
    const int code = sqlite3_step(m_handle.get());
    if (code == SQLITE_ROW)
        return true;
    check(code == SQLITE_DONE ? SQLITE_OK : code);
    return false;
}

void Statement::run()
{
    while (step()) {
    }
    check(sqlite3_reset(m_handle.get()));
}

QString Statement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_handle.get(), column));
    if (!bytes)
        return {};
    const QByteArrayView utf8(bytes, sqlite3_column_bytes(m_handle.get(), column));
    // A byte order mark at the start is a character here, which QString leaves out.
    QString text = QString::fromUtf8(utf8);
    return utf8.startsWith("\xEF\xBB\xBF") ? QChar(QChar::ByteOrderMark) + text : text;
}

qint64 Statement::number(int column) const
{
    return sqlite3_column_int64(m_handle.get(), column);
}

Interruption::Interruption(Database &database, std::function<bool()> isWanted)
    : m_database(database)
    , m_isWanted(std::move(isWanted))
{
    constexpr int stepsBetween = 10; // of SQLite's machine, about one item
    const auto ask = [](void *interruption) { return int(static_cast<Interruption *>(interruption)->m_isWanted()); };
    sqlite3_progress_handler(database.m_handle.get(), stepsBetween, ask, this);
}

Interruption::~Interruption()
{
    sqlite3_progress_handler(m_database.m_handle.get(), 0, nullptr, nullptr);
}

Transaction::Transaction(Database &database, Kind kind)
    : m_database(database)
{
    // A lock for writing at once: who begins by reading may be refused it later, without any wait.
    database.execute(kind == Kind::writing ? "BEGIN IMMEDIATE" : "BEGIN");
}

Transaction::~Transaction()
{
    if (m_isOpen)
        m_database.rollBack();
}

void Transaction::commit()
{
    m_database.execute("COMMIT");
    m_isOpen = false;
}

} // namespace lumora
