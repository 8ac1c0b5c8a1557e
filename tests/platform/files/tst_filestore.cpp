// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"
#include "platform/files/fulldisk.h"
#include "platform/files/storagelocation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class FileStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesWholeFiles()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("list.json");
        QVERIFY(!replaceFile(path, "first"));
        QVERIFY(!replaceFile(path, "second, longer"));
        QCOMPARE(contentOf(path), "second, longer");
        QCOMPARE(QFile::permissions(path) &
                     (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
                 QFile::Permissions());
        QCOMPARE(filesIn(folder.path()), QStringList{"list.json"});
    }

    void keepsTheOldFileWhenWritingFails_data()
    {
        QTest::addColumn<bool>("hasOldFile");
        QTest::addColumn<qsizetype>("size");
        QTest::newRow("full disk, old file") << true << qsizetype(100000);
        QTest::newRow("full disk, first file") << false << qsizetype(100000);
        QTest::newRow("full disk, a little too much") << true << qsizetype(5000);
    }

    void keepsTheOldFileWhenWritingFails()
    {
        QFETCH(bool, hasOldFile);
        QFETCH(qsizetype, size);
        const QTemporaryDir folder;
        const QString path = folder.filePath("list.json");
        if (hasOldFile)
            QVERIFY(!replaceFile(path, "old"));

        FileOutcome failed;
        {
            const FullDisk disk(4096); // half way
            failed = replaceFile(path, QByteArray(size, 'x'));
        }
        QVERIFY(failed);
        QCOMPARE(failed->description, "The file cannot be written: File too large.");
        QCOMPARE(filesIn(folder.path()), hasOldFile ? QStringList{"list.json"} : QStringList{});
        if (hasOldFile)
            QCOMPARE(contentOf(path), "old");
    }

    void createsFoldersForTheUserAlone()
    {
        const QTemporaryDir folder;
        const QString inner = folder.filePath("a/b/c");
        QVERIFY(!createFolder(inner));
        QVERIFY(!createFolder(inner));
        QVERIFY(QFileInfo(inner).isDir());
        QVERIFY(!QFile::permissions(inner).testAnyFlags(QFile::ReadGroup | QFile::ReadOther));

        QVERIFY(!replaceFile(folder.filePath("file"), "a file"));
        const FileOutcome failed = createFolder(folder.filePath("file/sub"));
        QVERIFY(failed);
        QVERIFY(failed->description.startsWith("The storage folder cannot be created: "));
    }

    void setsFilesAsideWithoutOverwriting()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("list.json");
        for (const char *content : {"one", "two", "three"}) {
            QVERIFY(!replaceFile(path, content));
            QVERIFY(!setFileAside(path));
        }
        QVERIFY(!setFileAside(path));
        QCOMPARE(filesIn(folder.path()),
                 (QStringList{"list.unreadable-1.json", "list.unreadable-2.json", "list.unreadable-3.json"}));
        QCOMPARE(contentOf(folder.filePath("list.unreadable-1.json")), "one");
        QCOMPARE(contentOf(folder.filePath("list.unreadable-3.json")), "three");
    }

    void copiesOrLeavesNothing()
    {
        const QTemporaryDir folder;
        const QString source = folder.filePath("source");
        QVERIFY(!replaceFile(source, "pixels"));
        QVERIFY(!copyFile(source, folder.filePath("copy")));
        QCOMPARE(contentOf(folder.filePath("copy")), "pixels");

        const QString longest(255, 'a');
        QVERIFY(!copyFile(source, folder.filePath(longest)));
        QVERIFY(QFile::remove(folder.filePath(longest)));

        for (const auto &[from, to] : {std::pair("gone", QString("other")), std::pair(".", QString("other")),
                                       std::pair("source", QString("copy")), std::pair("source", longest + 'a')}) {
            const FileOutcome failed = copyFile(folder.filePath(from), folder.filePath(to));
            QVERIFY(failed);
            QVERIFY(failed->description.startsWith("The file cannot be copied: "));
            QVERIFY2(!failed->description.contains(folder.path()), qPrintable(failed->description));
            QCOMPARE(filesIn(folder.path()), (QStringList{"copy", "source"}));
        }
    }

    void readsWhatIsThere()
    {
        const QTemporaryDir folder;
        QVERIFY(!readWholeFile(folder.filePath("none")));
        QVERIFY(!readWholeFile(folder.path()));
        QVERIFY(!replaceFile(folder.filePath("empty"), QByteArrayView()));
        QCOMPARE(readWholeFile(folder.filePath("empty")), QByteArray());
    }

    void replacesWhatALinkNames()
    {
        const QTemporaryDir folder;
        QVERIFY(!createFolder(folder.filePath("elsewhere")));
        QVERIFY(!replaceFile(folder.filePath("elsewhere/real"), "old"));
        QVERIFY(QFile::link(folder.filePath("elsewhere/real"), folder.filePath("link")));
        QVERIFY(!replaceFile(folder.filePath("link"), "new"));
        QVERIFY(QFileInfo(folder.filePath("link")).isSymLink());
        QCOMPARE(contentOf(folder.filePath("elsewhere/real")), "new");
    }

    void findsTheDataDirectory()
    {
        const QByteArray home = qgetenv("HOME");
        qputenv("XDG_DATA_HOME", "/somewhere/data");
        QCOMPARE(applicationSupportDirectory(), "/somewhere/data");
        qunsetenv("XDG_DATA_HOME");
        qputenv("HOME", "/somewhere/home");
        QCOMPARE(applicationSupportDirectory(), "/somewhere/home/.local/share");
        qputenv("XDG_DATA_HOME", "relative/data");
        QCOMPARE(applicationSupportDirectory(), "/somewhere/home/.local/share");
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("HOME");
        QVERIFY(!applicationSupportDirectory());
        qputenv("HOME", home);
    }

private:
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be opened)");
    }
    static QStringList filesIn(const QString &folder) { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }
};

QTEST_GUILESS_MAIN(FileStoreTest)
#include "tst_filestore.moc"
