// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace lumora {

/// A connection to a database file that exists, with the tokenizer "lumora" and the ranking function "relevance". Used
/// by one thread at a time. Every call throws DatabaseError where it fails.
class Database
{
public:
    /// patience: how long each call waits for a lock of another connection.
    Database(const QString &path, std::chrono::milliseconds patience);

    /// Runs one statement to its end; its rows are dropped.
    void execute(const char *sql);
    /// The first column of the first row.
    qint64 number(const char *sql);

private:
    friend class Interruption;
    friend class Statement;
    friend class Transaction;

    void rollBack() noexcept;

    struct Closer
    {
        void operator()(sqlite3 *handle) const;
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

/// One statement of a database, which must outlive it. Parameters and columns count as in SQL: the first parameter is
/// 1, the first column 0.
class Statement
{
public:
    /// sql: one that the layout of the index allows. A database that does not is broken.
    Statement(Database &database, const char *sql);

    void bind(int parameter, const QString &text); ///< NULL for a null text
    void bind(int parameter, const QByteArray &utf8);
    void bind(int parameter, qint64 number);

    /// Whether there is one more row; it replaces the last one.
    bool step();
    /// Runs it to its end and makes it ready for other parameters.
    void run();

    QString text(int column) const; ///< null for NULL
    qint64 number(int column) const;

private:
    void check(int code) const;

    struct Finalizer
    {
        void operator()(sqlite3_stmt *handle) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};

/// While it lives, whatever the database does fails as soon as this says so. It is asked on the thread that works, now
/// and then.
class Interruption
{
public:
    Interruption(Database &database, std::function<bool()> isWanted);
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;
    ~Interruption();

private:
    Database &m_database;
    std::function<bool()> m_isWanted;
};

/// All changes between its construction and commit(), or none of them; what is read, all of one moment.
class Transaction
{
public:
    enum class Kind { reading, writing };

    Transaction(Database &database, Kind kind);
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    ~Transaction();

    void commit();

private:
    Database &m_database;
    bool m_isOpen = true;
};

} // namespace lumora
