// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/modelfiles.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct TestFile
{
    QString name;
    qint64 age = 0; // seconds
    qint64 size = 4;
};

QString write(const QTemporaryDir &folder, const TestFile &test)
{
    QFile file(folder.filePath(test.name));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(test.size))
        qFatal("cannot write");
    file.setFileTime(QDateTime::currentDateTime().addSecs(-test.age), QFileDevice::FileModificationTime);
    return file.fileName();
}

} // namespace

class ModelFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newestModelIsChosen_data();
    void newestModelIsChosen();
    void filesThatCannotBeReadArePassedOver();
    void builtInModelIsTheLastResort();
    void splitModelChangesWithAnyPart();
    void exchangedFileIsNoticed();
    void unreadableFileIsNamed();
    void fileSettles_data();
    void fileSettles();
    void magicIsLookedAt_data();
    void magicIsLookedAt();
};

void ModelFilesTest::newestModelIsChosen_data()
{
    QTest::addColumn<QList<TestFile>>("files");
    QTest::addColumn<QString>("chosen"); // empty: none

    QTest::newRow("empty folder") << QList<TestFile>{} << QString();
    QTest::newRow("newest") << QList<TestFile>{{u"a.gguf"_s, 50}, {u"b.gguf"_s, 10}, {u"c.gguf"_s, 90}} << u"b.gguf"_s;
    QTest::newRow("same time") << QList<TestFile>{{u"a.gguf"_s, 50}, {u"b.gguf"_s, 50}} << u"b.gguf"_s;
    QTest::newRow("upper case") << QList<TestFile>{{u"A.GGUF"_s, 50}} << u"A.GGUF"_s;
    QTest::newRow("odd name") << QList<TestFile>{{u"ein Mödell (1).gguf"_s, 50}} << u"ein Mödell (1).gguf"_s;
    QTest::newRow("other endings") << QList<TestFile>{{u"a.gguf.part"_s, 1}, {u"a.bin"_s, 1}, {u"gguf"_s, 1}}
                                   << QString();
    QTest::newRow("hidden") << QList<TestFile>{{u".a.gguf"_s, 1}} << QString();
    QTest::newRow("image projector") << QList<TestFile>{{u"a.gguf"_s, 50}, {u"mmproj-a.gguf"_s, 10}} << u"a.gguf"_s;
    QTest::newRow("parts, the later newer")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"a-00002-of-00002.gguf"_s, 10}}
        << u"a-00001-of-00002.gguf"_s;
    QTest::newRow("a part makes its model the newest")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"a-00002-of-00002.gguf"_s, 10}, {u"b.gguf"_s, 30}}
        << u"a-00001-of-00002.gguf"_s;
    QTest::newRow("later part alone") << QList<TestFile>{{u"a-00002-of-00002.gguf"_s, 10}} << QString();
    QTest::newRow("more parts than a model has")
        << QList<TestFile>{{u"a-00002-of-99999.gguf"_s, 10}} << u"a-00002-of-99999.gguf"_s;
    QTest::newRow("like a part") << QList<TestFile>{{u"a-2-of-3.gguf"_s, 10}} << u"a-2-of-3.gguf"_s;
}

void ModelFilesTest::newestModelIsChosen()
{
    QFETCH(QList<TestFile>, files);
    QFETCH(QString, chosen);
    const QTemporaryDir folder;
    for (const TestFile &file : files)
        write(folder, file);
    const auto found = chooseModelFile(folder.path(), {});
    QCOMPARE(found ? found->path : QString(), chosen.isEmpty() ? QString() : folder.filePath(chosen));
}

void ModelFilesTest::filesThatCannotBeReadArePassedOver()
{
    const QTemporaryDir folder;
    const QString old = write(folder, {u"old.gguf"_s, 100});
    QVERIFY(QDir(folder.path()).mkdir(u"folder.gguf"_s));
    QVERIFY(QFile::link(folder.filePath(u"nowhere"_s), folder.filePath(u"dangling.gguf"_s)));
    QCOMPARE(chooseModelFile(folder.path(), {})->path, old);

    // A link to a model elsewhere counts, with the time of the model.
    const QTemporaryDir elsewhere;
    QVERIFY(QFile::link(write(elsewhere, {u"model"_s, 10}), folder.filePath(u"link.gguf"_s)));
    QCOMPARE(chooseModelFile(folder.path(), {})->path, folder.filePath(u"link.gguf"_s));
}

void ModelFilesTest::builtInModelIsTheLastResort()
{
    const QTemporaryDir folder;
    const QTemporaryDir shipped;
    const QString first = shipped.filePath(u"first.gguf"_s);
    const QString second = write(shipped, {u"second.gguf"_s});
    const QString missing = folder.filePath(u"missing"_s);

    QVERIFY(!chooseModelFile(missing, {first}));
    QVERIFY(!chooseModelFile(std::nullopt, {}));
    QCOMPARE(chooseModelFile(std::nullopt, {first, second})->path, second);
    QCOMPARE(chooseModelFile(missing, {first, second})->path, second);
    const QString own = write(folder, {u"own.gguf"_s, 1000});
    QCOMPARE(chooseModelFile(folder.path(), {second})->path, own);
}

void ModelFilesTest::splitModelChangesWithAnyPart()
{
    const QTemporaryDir folder;
    write(folder, {u"a-00001-of-00003.gguf"_s, 50, 10});
    write(folder, {u"a-00002-of-00003.gguf"_s, 40, 20});
    const auto incomplete = chooseModelFile(folder.path(), {});
    QCOMPARE(incomplete->size, 30);
    QVERIFY(!isSettled(*incomplete, {}, 1s));
    write(folder, {u"a-00003-of-00003.gguf"_s, 45, 30});
    const auto complete = chooseModelFile(folder.path(), {});
    QCOMPARE(complete->size, 60);
    QVERIFY(isSettled(*complete, {}, 1s));
    QCOMPARE(complete->modified, incomplete->modified);
    write(folder, {u"a-00002-of-00003.gguf"_s, 5, 20});
    QVERIFY(chooseModelFile(folder.path(), {})->modified > complete->modified);
}

void ModelFilesTest::exchangedFileIsNoticed()
{
    const QTemporaryDir folder;
    const QString path = write(folder, {u"a.gguf"_s, 50});
    write(folder, {u"b"_s});
    const auto setTime = [](const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadWrite) &&
               file.setFileTime(QDateTime::fromSecsSinceEpoch(1000000), QFileDevice::FileModificationTime);
    };
    QVERIFY(setTime(path) && setTime(folder.filePath(u"b"_s)));
    const auto before = chooseModelFile(folder.path(), {});
    QVERIFY(chooseModelFile(folder.path(), {}) == before);

    QVERIFY(QFile::remove(path) && QFile::rename(folder.filePath(u"b"_s), path));
    const auto exchanged = chooseModelFile(folder.path(), {});
    QCOMPARE(exchanged->modified, before->modified);
    QVERIFY(exchanged->identity != before->identity);

    // Written over in place, and its time set back.
    QTest::qWait(50);
    write(folder, {u"a.gguf"_s});
    QVERIFY(setTime(path));
    const auto rewritten = chooseModelFile(folder.path(), {});
    QCOMPARE(rewritten->modified, before->modified);
    QCOMPARE(rewritten->identity, exchanged->identity);
    QVERIFY(rewritten->touched > exchanged->touched);
}

void ModelFilesTest::unreadableFileIsNamed()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"gone.gguf"_s);
    QVERIFY(!unreadableModelFile(folder.path(), {path}));
    QVERIFY(!unreadableModelFile(folder.filePath(u"missing"_s), {}));
    QVERIFY(QFile::link(folder.filePath(u"nowhere"_s), path));
    QCOMPARE(unreadableModelFile(folder.path(), {}), path);
    QCOMPARE(unreadableModelFile(std::nullopt, {path}), path);
}

void ModelFilesTest::fileSettles_data()
{
    using Look = std::optional<ModelFile>;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const qint64 old = now - 3600000;
    const ModelFile file{u"/a"_s, 10, old};

    QTest::addColumn<ModelFile>("file");
    QTest::addColumn<Look>("lookBefore");
    QTest::addColumn<bool>("settled");
    QTest::newRow("old, first look") << file << Look() << true;
    QTest::newRow("old, unchanged") << file << Look(file) << true;
    QTest::newRow("larger than before") << file << Look({u"/a"_s, 9, old}) << false;
    QTest::newRow("other time than before") << file << Look({u"/a"_s, 10, old - 1}) << false;
    QTest::newRow("another file before") << file << Look({u"/b"_s, 9, old}) << true;
    QTest::newRow("just written") << ModelFile{u"/a"_s, 10, now - 1000} << Look() << false;
    QTest::newRow("just written, unchanged")
        << ModelFile{u"/a"_s, 10, now - 1000} << Look({u"/a"_s, 10, now - 1000}) << false;
    QTest::newRow("from the future") << ModelFile{u"/a"_s, 10, now + 3600000} << Look() << true;
}

void ModelFilesTest::fileSettles()
{
    QFETCH(ModelFile, file);
    QFETCH(std::optional<ModelFile>, lookBefore);
    QFETCH(bool, settled);
    // The limit is far from both sides, so that a slow machine changes nothing.
    QCOMPARE(isSettled(file, lookBefore, 10min), settled);
}

void ModelFilesTest::magicIsLookedAt_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isModel");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("cut") << QByteArray("GGU") << false;
    QTest::newRow("other") << QByteArray("GGML and more") << false;
    QTest::newRow("model") << QByteArray("GGUF\3\0\0\0", 8) << true;
}

void ModelFilesTest::magicIsLookedAt()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isModel);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"a.gguf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QCOMPARE(beginsLikeModel(file.fileName()), isModel);
}

QTEST_GUILESS_MAIN(ModelFilesTest)
#include "modelfilestest.moc"
