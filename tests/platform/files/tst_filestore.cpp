// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"
#include "platform/files/storagelocation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace lumora;

class FileStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesWholeFiles();
    void keepsTheOldFileWhenWritingFails_data();
    void keepsTheOldFileWhenWritingFails();
    void createsFoldersForTheUserAlone();
    void setsFilesAsideWithoutOverwriting();
    void copiesOrLeavesNothing();
    void readsWhatIsThere();
    void replacesWhatALinkNames();
    void findsTheDataDirectory();

private:
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be opened)");
    }
    static QStringList filesIn(const QString &folder) { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }
};

void FileStoreTest::replacesWholeFiles()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.json"));
    QVERIFY(!replaceFile(path, "first"));
    QVERIFY(!replaceFile(path, "second, longer"));
    QCOMPARE(contentOf(path), "second, longer");
    QCOMPARE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
             QFile::Permissions());
    QCOMPARE(filesIn(folder.path()), QStringList{QStringLiteral("list.json")});
}

void FileStoreTest::keepsTheOldFileWhenWritingFails_data()
{
    QTest::addColumn<bool>("hasOldFile");
    QTest::newRow("full disk, old file") << true;
    QTest::newRow("full disk, first file") << false;
}

void FileStoreTest::keepsTheOldFileWhenWritingFails()
{
    QFETCH(bool, hasOldFile);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.json"));
    if (hasOldFile)
        QVERIFY(!replaceFile(path, "old"));

    // A limit on the size of files stands for a full disk: the write itself fails, half way.
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit small{4096, unlimited.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const FileOutcome failed = replaceFile(path, QByteArray(100'000, 'x'));
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, previousHandler);

    QVERIFY(failed);
    QVERIFY(failed->description.startsWith(QStringLiteral("The file cannot be written: ")));
    QCOMPARE(filesIn(folder.path()), hasOldFile ? QStringList{QStringLiteral("list.json")} : QStringList{});
    if (hasOldFile)
        QCOMPARE(contentOf(path), "old");
}

void FileStoreTest::createsFoldersForTheUserAlone()
{
    const QTemporaryDir folder;
    const QString inner = folder.filePath(QStringLiteral("a/b/c"));
    QVERIFY(!createFolder(inner));
    QVERIFY(!createFolder(inner));
    QVERIFY(QFileInfo(inner).isDir());
    QVERIFY(!QFile::permissions(inner).testAnyFlags(QFile::ReadGroup | QFile::ReadOther));

    QVERIFY(!replaceFile(folder.filePath(QStringLiteral("file")), "a file"));
    const FileOutcome failed = createFolder(folder.filePath(QStringLiteral("file/sub")));
    QVERIFY(failed);
    QVERIFY(failed->description.startsWith(QStringLiteral("The storage folder cannot be created: ")));
}

void FileStoreTest::setsFilesAsideWithoutOverwriting()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.json"));
    for (const char *content : {"one", "two", "three"}) {
        QVERIFY(!replaceFile(path, content));
        QVERIFY(!setFileAside(path));
    }
    QVERIFY(!setFileAside(path));
    QCOMPARE(filesIn(folder.path()),
             (QStringList{QStringLiteral("list.unreadable-1.json"), QStringLiteral("list.unreadable-2.json"),
                          QStringLiteral("list.unreadable-3.json")}));
    QCOMPARE(contentOf(folder.filePath(QStringLiteral("list.unreadable-1.json"))), "one");
    QCOMPARE(contentOf(folder.filePath(QStringLiteral("list.unreadable-3.json"))), "three");
}

void FileStoreTest::copiesOrLeavesNothing()
{
    const QTemporaryDir folder;
    const QString source = folder.filePath(QStringLiteral("source"));
    QVERIFY(!replaceFile(source, "pixels"));
    QVERIFY(!copyFile(source, folder.filePath(QStringLiteral("copy"))));
    QCOMPARE(contentOf(folder.filePath(QStringLiteral("copy"))), "pixels");

    for (const char *picked : {"gone", "."}) {
        const FileOutcome failed = copyFile(folder.filePath(picked), folder.filePath("other"));
        QVERIFY(failed);
        QVERIFY(failed->description.startsWith("The file cannot be copied: "));
        QVERIFY2(!failed->description.contains(folder.path()), qPrintable(failed->description));
        QCOMPARE(filesIn(folder.path()), (QStringList{"copy", "source"}));
    }
}

void FileStoreTest::readsWhatIsThere()
{
    const QTemporaryDir folder;
    QVERIFY(!readWholeFile(folder.filePath("none")));
    QVERIFY(!readWholeFile(folder.path()));
    QVERIFY(!replaceFile(folder.filePath("empty"), QByteArrayView()));
    QCOMPARE(readWholeFile(folder.filePath("empty")), QByteArray());
}

void FileStoreTest::replacesWhatALinkNames()
{
    const QTemporaryDir folder;
    QVERIFY(!createFolder(folder.filePath("elsewhere")));
    QVERIFY(!replaceFile(folder.filePath("elsewhere/real"), "old"));
    QVERIFY(QFile::link(folder.filePath("elsewhere/real"), folder.filePath("link")));
    QVERIFY(!replaceFile(folder.filePath("link"), "new"));
    QVERIFY(QFileInfo(folder.filePath("link")).isSymLink());
    QCOMPARE(contentOf(folder.filePath("elsewhere/real")), "new");
}

void FileStoreTest::findsTheDataDirectory()
{
    const QByteArray home = qgetenv("HOME");
    qputenv("XDG_DATA_HOME", "/somewhere/data");
    QCOMPARE(applicationSupportDirectory(), QStringLiteral("/somewhere/data"));
    qunsetenv("XDG_DATA_HOME");
    qputenv("HOME", "/somewhere/home");
    QCOMPARE(applicationSupportDirectory(), QStringLiteral("/somewhere/home/.local/share"));
    qputenv("XDG_DATA_HOME", "relative/data");
    QCOMPARE(applicationSupportDirectory(), QStringLiteral("/somewhere/home/.local/share"));
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("HOME");
    QVERIFY(!applicationSupportDirectory());
    qputenv("HOME", home);
}

QTEST_GUILESS_MAIN(FileStoreTest)
#include "tst_filestore.moc"
