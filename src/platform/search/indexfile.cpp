// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/indexfile.h"

#include "platform/files/filedescriptor.h"
#include "platform/files/filestore.h"
#include "platform/search/databaseerror.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <unicode/uversion.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <utility>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.search", QtWarningMsg)

constexpr std::chrono::milliseconds readingPatience{3000};
constexpr qint64 applicationId = 0x4C756D53; // what says that a database is an index of this program
constexpr qint64 layout = 1;                 // of its tables, as user_version

/// To be raised where folding or the irregular forms change: the words of all items are then found anew.
constexpr int wordRules = 1;

constexpr const char *createLayout[] = {
    // The long text comes last: what stands before it is read without it.
    "CREATE TABLE items (id INTEGER PRIMARY KEY, identifier TEXT UNIQUE, domain TEXT, title TEXT, "
    "contentDescription TEXT, textContent TEXT)",
    "CREATE VIRTUAL TABLE words USING fts5 (title, textContent, content = items, content_rowid = id, "
    "tokenize = 'porter lumora')",
    "CREATE TRIGGER itemAdded AFTER INSERT ON items BEGIN "
    "INSERT INTO words (rowid, title, textContent) VALUES (new.id, new.title, new.textContent); END",
    "CREATE TRIGGER itemDeleted AFTER DELETE ON items BEGIN "
    "INSERT INTO words (words, rowid, title, textContent) VALUES ('delete', old.id, old.title, old.textContent); END",
    "CREATE TABLE rules (version TEXT NOT NULL)",
    "INSERT INTO rules VALUES ('')",
};

QString rulesVersion()
{
    UVersionInfo version;
    u_getVersion(version);
    return QStringLiteral("%1, ICU %2.%3").arg(wordRules).arg(version[0]).arg(version[1]);
}

/// Whether the database is an index, false for one without any tables yet.
bool hasLayout(Database &database)
{
    const qint64 id = database.number("PRAGMA application_id");
    const qint64 version = database.number("PRAGMA user_version");
    if (id == applicationId && version > layout)
        throw DatabaseError(DatabaseError::Kind::other,
                            QCoreApplication::translate(
                                "lumora::Search", "The search index was made by a newer version of this program."));
    if (id == applicationId && version == layout)
        return true;
    if (id == 0 && version == 0 && database.number("SELECT count(*) FROM sqlite_master") == 0)
        return false;
    throw DatabaseError(DatabaseError::Kind::broken, QStringLiteral("The file is another program's database."));
}

/// All of it as of one moment: while another connection makes the layout, half of it would look like damage.
bool hasWholeLayout(Database &database)
{
    const Transaction moment(database, Transaction::Kind::reading);
    return hasLayout(database);
}

/// Words are deleted as they are found then: where the rules have changed, all must be found anew before.
void applyRules(Database &database, const std::function<bool()> &isUnwanted)
{
    Statement isApplied(database, "SELECT count(*) FROM rules WHERE version = ?1");
    isApplied.bind(1, rulesVersion());
    if (isApplied.step() && isApplied.number(0) == 1)
        return;
    const Interruption interruption(database, isUnwanted);
    database.execute("INSERT INTO words (words) VALUES ('rebuild')");
    Statement note(database, "UPDATE rules SET version = ?1");
    note.bind(1, rulesVersion());
    note.run();
}

void prepareForWriting(Database &database, const std::function<bool()> &isUnwanted)
{
    database.execute("PRAGMA synchronous = EXTRA"); // what has been said to be done survives a power cut
    Transaction transaction(database, Transaction::Kind::writing);
    if (!hasLayout(database)) {
        for (const char *sql : createLayout)
            database.execute(sql);
        database.execute("PRAGMA application_id = " + QByteArray::number(applicationId));
        database.execute("PRAGMA user_version = " + QByteArray::number(layout));
    }
    applyRules(database, isUnwanted);
    transaction.commit();
}

DatabaseError notReplaced(int systemError)
{
    return DatabaseError::fromErrno(
        QT_TRANSLATE_NOOP("lumora::Search", "The search index is damaged and cannot be replaced: %1."), systemError);
}

} // namespace

IndexFile::IndexFile(QString path)
    : m_path(std::move(path))
{
}

std::optional<IndexFile::Identity> IndexFile::identity() const
{
    struct statx status = {};
    constexpr unsigned wanted = STATX_TYPE | STATX_INO | STATX_BTIME;
    if (::statx(AT_FDCWD, QFile::encodeName(m_path).constData(), 0, wanted, &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return std::nullopt;
        throw DatabaseError::fromErrno(QT_TRANSLATE_NOOP("lumora::Search", "The search index cannot be opened: %1."),
                                       errno);
    }
    if (S_ISREG(status.stx_mode))
        return Identity{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino,
                        status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec};
    // Opening a pipe could wait for ever.
    throw DatabaseError(DatabaseError::Kind::other,
                        QCoreApplication::translate("lumora::Search",
                                                    "The search index cannot be opened: something else has its name."));
}

void IndexFile::create() const
{
    if (const FileOutcome failed = createFolder(QFileInfo(m_path).path()))
        throw DatabaseError(DatabaseError::Kind::other, failed->description);
    // SQLite would let others read it. What it puts beside the file gets the same permissions.
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    const int handle =
        ::open(QFile::encodeName(m_path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly);
    if (handle >= 0)
        ::close(handle);
    else if (errno != EEXIST)
        throw DatabaseError::fromErrno(QT_TRANSLATE_NOOP("lumora::Search", "The search index cannot be created: %1."),
                                       errno);
}

std::optional<IndexFile::Reader> IndexFile::openForReading()
{
    const std::optional<Identity> current = identity();
    if (!current)
        return std::nullopt;
    std::optional<Reader> reader = takeIdle();
    if (!reader || reader->identity != *current)
        reader = Reader{Database(m_path, readingPatience), *current};
    return hasWholeLayout(reader->database) ? std::move(reader) : std::nullopt;
}

std::optional<IndexFile::Reader> IndexFile::takeIdle()
{
    const std::lock_guard lock(m_idleLock);
    return std::exchange(m_idle, std::nullopt);
}

void IndexFile::giveBack(Reader reader)
{
    const std::lock_guard lock(m_idleLock);
    m_idle = std::move(reader);
}

std::optional<Database> IndexFile::openForWriting(IfMissing ifMissing, std::chrono::milliseconds patience,
                                                  const std::function<bool()> &isUnwanted) const
{
    if (!identity()) {
        if (ifMissing == IfMissing::leave)
            return std::nullopt;
        create();
    }
    Database database(m_path, patience);
    prepareForWriting(database, isUnwanted);
    return database;
}

void IndexFile::removeBroken(const Identity &broken) const
{
    // One program at a time: nobody may put another file there between the look at it and its removal.
    const QByteArray folder = QFile::encodeName(QFileInfo(m_path).path());
    const FileDescriptor lock(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    while (!lock.isOpen() || ::flock(lock.number(), LOCK_EX) != 0) {
        if (!lock.isOpen() || errno != EINTR)
            throw notReplaced(errno);
    }
    if (identity() != broken)
        return;
    qCWarning(log, "the search index is broken, and is removed");
    // The file itself last: what lies beside it must not meet a new one.
    for (const char *ending : {"-wal", "-shm", "-journal", ""}) {
        if (::unlink((QFile::encodeName(m_path) + ending).constData()) != 0 && errno != ENOENT)
            throw notReplaced(errno);
    }
}

} // namespace lumora
