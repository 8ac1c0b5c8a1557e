// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/fulldisk.h"
#include "platform/search/database.h"
#include "platform/search/databaseerror.h"
#include "platform/search/searchhelpers.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <pthread.h>
#include <sys/fsuid.h>
#include <sys/stat.h>

using namespace lumora;
using namespace std::chrono_literals;

namespace {

constexpr unsigned nobody = 65534;

} // namespace

class SearchIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void replacesAndDeletes();
    void isForThisUserAlone();
    void replacesBrokenFiles_data();
    void replacesBrokenFiles();
    void saysWhyItCannotBeUsed_data();
    void saysWhyItCannotBeUsed();
    void hasNoThread();
    void keepsWhatItHasWhenTheDiskIsFull();
    void findsItsWordsAnewWhenTheirRulesChange();
    void stopsFindingItsWordsAnew_data();
    void stopsFindingItsWordsAnew();
    void removesNoFileThatTookThePlaceOfABrokenOne();
    void sharesItsFile();
    void answersWhileItIsWritten();
    void endsItsWorkWhenItIsDestroyed();
    void survivesAKill();

private:
    void breakFile(const QString &how) const;
    void hinder(const QString &how);
    Database open() const { return {m_path, 100ms}; }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::shared_ptr<SearchIndex> m_index;
    std::optional<Database> m_other;
};

void SearchIndexTest::init()
{
    m_other.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath("data/index");
    m_index = std::make_shared<SearchIndex>(m_path);
}

void SearchIndexTest::replacesAndDeletes()
{
    const auto first = m_index->indexSearchableItems({{"a", {}, "Lease", "cats"}, {"b", {}, "Letter", "dogs"}});
    const auto second =
        m_index->indexSearchableItems({{"a", {}, "Lease", "birds"}, {"c", {}, "c", "x"}, {"c", {}, "c", "y"}});
    const auto third = m_index->deleteSearchableItems({"b", "unknown"});
    for (const auto &change : {first, second, third})
        QCOMPARE(failureOf(change), QString());
    QCOMPARE(found(m_index, "cats dogs x"), QStringList());
    QCOMPARE(found(m_index, "birds"), QStringList{"a"});
    QCOMPARE(found(m_index, "y"), QStringList{"c"});
    QCOMPARE(failureOf(m_index->deleteSearchableItems({"a", "c"})), QString());
    QCOMPARE(found(m_index, "birds y"), QStringList());
}

void SearchIndexTest::isForThisUserAlone()
{
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    Database writer = open();
    writer.execute("BEGIN IMMEDIATE");
    writer.execute("DELETE FROM rules");
    const QStringList files = QDir(QFileInfo(m_path).path()).entryList(QDir::Files);
    QVERIFY(files.contains("index-journal"));
    for (const QString &file : files) {
        const auto rights = QFile::permissions(QFileInfo(m_path).path() + '/' + file);
        QCOMPARE(rights & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
                 QFile::Permissions());
    }
}

void SearchIndexTest::replacesBrokenFiles_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"text", "zeros", "only a head", "cut in half", "damaged inside", "another program's",
                            "no words", "words damaged"})
        QTest::newRow(how) << how;
}

// The index at m_path has many items; what is left of it depends.
void SearchIndexTest::breakFile(const QString &how) const
{
    if (how == "another program's")
        open().execute("PRAGMA application_id = 1");
    else if (how == "no words")
        open().execute("DROP TABLE words");
    else if (how == "words damaged")
        open().execute("UPDATE words_data SET block = x'FFFFFFFFFFFFFFFF'");
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    const qint64 size = file.size();
    QVERIFY(size > 100'000);
    if (how == "text" || how == "zeros") {
        QVERIFY(file.resize(0));
        file.write(QByteArray(100'000, how == "text" ? 'x' : '\0'));
    } else if (how == "only a head") {
        QVERIFY(file.resize(100));
    } else if (how == "cut in half") {
        QVERIFY(file.resize(size / 2));
    } else if (how == "damaged inside") {
        QVERIFY(file.seek(size / 10));
        file.write(QByteArray(int(size / 10 * 8), 'x'));
    }
}

void SearchIndexTest::replacesBrokenFiles()
{
    QFETCH(QString, how);
    const auto fillAndBreak = [&] {
        QList<SearchableItem> items;
        for (int i = 0; i < 300; ++i)
            items.append({QString::number(i),
                          {},
                          "Title",
                          "cats and number" + QString::number(i) + QString(" more").repeated(300)});
        QCOMPARE(failureOf(m_index->indexSearchableItems(items)), QString());
        breakFile(how);
    };

    fillAndBreak();
    QCOMPARE(failureOfAdding(m_index, "new", "dogs"), QString());
    QCOMPARE(found(m_index, "dogs"), QStringList{"new"});
    QCOMPARE(open().number("SELECT count(*) FROM items"), 1);

    fillAndBreak();
    UserQuery query(m_index, "cats more", {{"textContent"}, 1000});
    while (query.next()) {
    }
    QTRY_VERIFY(!QFile::exists(m_path));
    QCOMPARE(failureOfAdding(m_index, "newer", "dogs"), QString());
    QCOMPARE(found(m_index, "dogs"), QStringList{"newer"});
}

void SearchIndexTest::saysWhyItCannotBeUsed_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("writing"); // the failure; empty: none
    QTest::addColumn<QString>("reading");
    const QString inUse = "The search index is busy: another program uses it, or it is being made anew after an "
                          "update. Try again in a few minutes.";
    QTest::newRow("written by another") << "written" << inUse << "";
    QTest::newRow("locked by another") << "locked" << inUse << inUse;
    const QString newer = "The search index was made by a newer version of this program.";
    QTest::newRow("newer") << "newer" << newer << newer;
    const QString taken = "The search index cannot be opened: something else has its name.";
    QTest::newRow("folder") << "folder" << taken << taken;
    QTest::newRow("pipe") << "pipe" << taken << taken;
    const QString readOnly = "The search index cannot be written: it or its folder is read-only.";
    QTest::newRow("read-only folder") << "read-only folder" << readOnly << "";
    QTest::newRow("read-only folder, no file") << "read-only, empty"
                                               << "The search index cannot be created: Permission denied."
                                               << "";
    QTest::newRow("file for a folder") << "file for a folder"
                                       << "The storage folder cannot be created: File exists."
                                       << "";
}

void SearchIndexTest::hinder(const QString &how)
{
    const QString folder = QFileInfo(m_path).path();
    if (how == "written" || how == "locked") {
        m_other.emplace(m_path, 0ms);
        m_other->execute(how == "locked" ? "BEGIN EXCLUSIVE" : "BEGIN IMMEDIATE");
    } else if (how == "newer") {
        open().execute("PRAGMA user_version = 1000");
    } else if (how == "read-only folder") {
        QVERIFY(::chmod(qPrintable(m_path), 0666) == 0 && ::chmod(qPrintable(folder), 0555) == 0);
    } else {
        QVERIFY(QFile::remove(m_path));
        if (how == "folder")
            QVERIFY(QDir().mkdir(m_path));
        else if (how == "pipe")
            QVERIFY(::mkfifo(qPrintable(m_path), 0600) == 0);
        else if (how == "read-only, empty")
            QVERIFY(::chmod(qPrintable(folder), 0555) == 0);
        else if (how == "file for a folder")
            QVERIFY(QDir().rmdir(folder) && QFile(m_folder->path() + "/other").rename(folder));
    }
}

void SearchIndexTest::saysWhyItCannotBeUsed()
{
    QFETCH(QString, how);
    QFETCH(QString, writing);
    QFETCH(QString, reading);
    QFile(m_folder->filePath("other")).open(QIODevice::WriteOnly);
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    hinder(how);

    if (how.startsWith("read-only")) {
        QVERIFY(::chmod(qPrintable(m_folder->path()), 0755) == 0);
        setfsuid(nobody); // permissions do not bind root; the index's thread is started with the same user
    }
    m_index = std::make_shared<SearchIndex>(m_path);
    const QString written = failureOfAdding(m_index, "b", "cats");
    QString read;
    try {
        found(m_index, "cats");
    } catch (const SearchError &error) {
        read = error.description();
    }
    setfsuid(geteuid());
    ::chmod(qPrintable(QFileInfo(m_path).path()), 0700);
    QCOMPARE(written, writing);
    QCOMPARE(read, reading);
}

void SearchIndexTest::hasNoThread()
{
    pthread_attr_t usual;
    QCOMPARE(pthread_getattr_default_np(&usual), 0);
    pthread_attr_t huge = usual;
    QCOMPARE(pthread_attr_setstacksize(&huge, size_t(1) << 47), 0); // which no system has room for
    QCOMPARE(pthread_setattr_default_np(&huge), 0);
    const auto deletion = m_index->deleteSearchableItems({"a"});
    const QString failure = failureOfAdding(m_index, "a", "cats");
    QCOMPARE(pthread_setattr_default_np(&usual), 0);
    QVERIFY2(failure.endsWith("Close some of them and try again."), qPrintable(failure));
    QCOMPARE(failureOf(deletion), failure);
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
}

void SearchIndexTest::keepsWhatItHasWhenTheDiskIsFull()
{
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    {
        const FullDisk disk(200'000);
        const QString failure = failureOfAdding(m_index, "b", QString("cats and dogs ").repeated(100'000));
        QVERIFY2(failure.startsWith("The search index cannot be used: "), qPrintable(failure));
        QCOMPARE(found(m_index, "cats"), QStringList{"a"});
    }
    QCOMPARE(failureOfAdding(m_index, "b", "cats"), QString());
    QCOMPARE(found(m_index, "cats").size(), 2);
}

void SearchIndexTest::findsItsWordsAnewWhenTheirRulesChange()
{
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    open().execute("UPDATE rules SET version = 'those of another ICU'");
    open().execute("DELETE FROM words_data WHERE id > 10"); // what the words were by those rules
    QCOMPARE(failureOfAdding(m_index, "b", "cats"), QString());
    QCOMPARE(found(m_index, "cats").size(), 2);
}

void SearchIndexTest::stopsFindingItsWordsAnew_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("asked to stop") << false;
    QTest::newRow("destroyed") << true;
}

void SearchIndexTest::stopsFindingItsWordsAnew()
{
    QFETCH(bool, isDestroyed);
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    open().execute("UPDATE rules SET version = 'those of another ICU'");
    open().execute("DROP TRIGGER itemAdded"); // whose work would take as long
    open().execute("INSERT INTO items (identifier, textContent) WITH RECURSIVE n (i) AS (VALUES (1) UNION ALL "
                   "SELECT i + 1 FROM n LIMIT 200) "
                   "SELECT 'x' || i, replace(hex(zeroblob(20000)), '00', 'cats and dogs ') FROM n");
    std::stop_source stop;
    const auto change =
        m_index->indexSearchableItems({{.uniqueIdentifier = "b", .textContent = "mice"}}, stop.get_token());
    QTRY_VERIFY(QFile::exists(m_path + "-journal"));
    if (isDestroyed)
        m_index.reset();
    else
        stop.request_stop();
    QCOMPARE(failureOf(change), "The search index was closed.");
    QCOMPARE(open().number("SELECT count(*) FROM rules WHERE version = 'those of another ICU'"), 1);
    QCOMPARE(open().number("SELECT count(*) FROM items"), 201);
}

void SearchIndexTest::removesNoFileThatTookThePlaceOfABrokenOne()
{
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    const IndexFile file(m_path);
    const IndexFile::Identity broken = *file.identity();
    QVERIFY(QFile::remove(m_path));
    QCOMPARE(failureOfAdding(m_index, "b", "cats"), QString());
    file.removeBroken(broken);
    QCOMPARE(found(m_index, "cats"), QStringList{"b"});

    // A folder that cannot be locked, since it cannot be read.
    QVERIFY(::chmod(qPrintable(m_folder->path()), 0755) == 0);
    QVERIFY(::chmod(qPrintable(QFileInfo(m_path).path()), 0333) == 0);
    setfsuid(nobody);
    const auto unlocked = [&] { QVERIFY_THROWS_EXCEPTION(DatabaseError, file.removeBroken(*file.identity())); };
    unlocked();
    setfsuid(geteuid());
    QVERIFY(QFile::exists(m_path));
    file.removeBroken(*file.identity());
    QVERIFY(!QFile::exists(m_path));
}

void SearchIndexTest::sharesItsFile()
{
    const auto other = std::make_shared<SearchIndex>(m_path);
    QList<QFuture<SearchIndex::Outcome>> changes;
    for (int i = 0; i < 5; ++i) {
        for (const auto &index : {m_index, other}) {
            const QString identifier = QString::number(changes.size());
            changes.append(index->indexSearchableItems({{.uniqueIdentifier = identifier, .textContent = "cats"}}));
        }
    }
    qsizetype most = 0;
    while (!changes.last().isFinished()) {
        const qsizetype now = found(m_index, "cats").size();
        QVERIFY(now >= most);
        most = now;
    }
    for (const auto &change : changes)
        QCOMPARE(failureOf(change), QString());
    QCOMPARE(found(m_index, "cats").size(), changes.size());
}

void SearchIndexTest::answersWhileItIsWritten()
{
    QCOMPARE(failureOf(m_index->indexSearchableItems({{"a", {}, {}, "cats"}, {"b", {}, {}, "cats"}})), QString());
    UserQuery query(m_index, "cats", {{}, 2});
    QVERIFY(query.next());
    QCOMPARE(failureOf(m_index->deleteSearchableItems({"a", "b"})), QString());
    QVERIFY(!query.next());
    QCOMPARE(found(m_index, "cats"), QStringList());
}

void SearchIndexTest::endsItsWorkWhenItIsDestroyed()
{
    QCOMPARE(failureOfAdding(m_index, "a", "cats"), QString());
    QList<QFuture<SearchIndex::Outcome>> changes;
    for (int i = 0; i < 100; ++i)
        changes.append(m_index->indexSearchableItems({{.uniqueIdentifier = "b", .textContent = "cats"}}));
    changes.append(m_index->deleteSearchableItems({"a"}));
    m_index.reset();
    for (const auto &change : changes)
        QVERIFY(change.isFinished() && change.resultCount() == 1);
    QVERIFY(!changes.last().result());
    QVERIFY(!found(std::make_shared<SearchIndex>(m_path), "cats").contains("a"));
}

void SearchIndexTest::survivesAKill()
{
    for (int round = 0; round < 3; ++round) {
        QProcess writer;
        writer.start(INDEX_WRITER, {m_path});
        QByteArray calls;
        QTRY_VERIFY_WITH_TIMEOUT((writer.waitForReadyRead(50), calls += writer.readAll()).count('\n') > 3 * round,
                                 60000);
        writer.kill();
        QVERIFY(writer.waitForFinished());
        QCOMPARE(writer.exitStatus(), QProcess::CrashExit);

        for (int call = 0; call < calls.count('\n'); ++call)
            QCOMPARE(found(m_index, "call" + QString::number(call)).size(), 3);
        Database database = open();
        QCOMPARE(database.number("SELECT count(*) FROM items WHERE instr(textContent, 'call') = 1") % 3, 0);
        QCOMPARE(database.number("SELECT count(*) FROM pragma_integrity_check WHERE integrity_check = 'ok'"), 1);
        database.execute("INSERT INTO words (words, rank) VALUES ('integrity-check', 1)");
    }
}

QTEST_GUILESS_MAIN(SearchIndexTest)
#include "tst_searchindex.moc"
