// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/modelfiles.h"

#include "platform/model/local/ggufkind.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace lumora;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct TestFile
{
    QString name;
    qint64 age = 0; // seconds
    qint64 size = 4;
    QByteArray content;
};

constexpr auto moments = 20s; // ages of files are far from it on either side

std::optional<ModelFile> choose(const QTemporaryDir &folder, const QStringList &builtIn = {})
{
    return chooseModelFile(folder.path(), builtIn, moments);
}

/// The start of a GGUF file, up to what its architecture is.
QByteArray headOf(const QByteArray &architecture)
{
    const auto number = [](auto value) {
        return QByteArray(reinterpret_cast<const char *>(&value), qsizetype(sizeof value));
    };
    const auto text = [&](const QByteArray &characters) { return number(quint64(characters.size())) + characters; };
    return "GGUF" + number(quint32(3)) + number(quint64(1)) + number(quint64(3)) + text("general.type") +
           number(quint32(8)) + text("model") + text("general.version") + number(quint32(5)) + number(qint32(1)) +
           text("general.architecture") + number(quint32(8)) + text(architecture) + "and so on";
}

QString write(const QTemporaryDir &folder, const TestFile &test)
{
    QFile file(folder.filePath(test.name));
    const qint64 size = std::max<qint64>(test.size, test.content.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(test.content) < 0 || !file.resize(size))
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
    void projectorIsMatchedByItsName_data();
    void projectorIsMatchedByItsName();
    void projectorCountsAsPartOfTheModel();
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
    QTest::newRow("projector by what it is")
        << QList<TestFile>{{u"a.gguf"_s, 50}, {u"b.gguf"_s, 10, 0, headOf("clip")}} << u"a.gguf"_s;
    QTest::newRow("projector that is being written")
        << QList<TestFile>{{u"a.gguf"_s, 50}, {u"mmproj-b.gguf"_s, 1, 0, headOf("clip").left(70)}} << u"a.gguf"_s;
    QTest::newRow("model that is called like a projector")
        << QList<TestFile>{{u"a.gguf"_s, 50}, {u"mmproj-b.gguf"_s, 10, 0, headOf("llama")}} << u"mmproj-b.gguf"_s;
    QTest::newRow("parts, the later newer")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"a-00002-of-00002.gguf"_s, 10}}
        << u"a-00001-of-00002.gguf"_s;
    QTest::newRow("a part makes its model the newest")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"a-00002-of-00002.gguf"_s, 10}, {u"b.gguf"_s, 30}}
        << u"a-00001-of-00002.gguf"_s;
    QTest::newRow("a part is missing") << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"b.gguf"_s, 90}}
                                       << u"b.gguf"_s;
    QTest::newRow("a part is still to come")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 1}, {u"b.gguf"_s, 90}} << u"a-00001-of-00002.gguf"_s;
    QTest::newRow("parts of both are missing")
        << QList<TestFile>{{u"a-00001-of-00002.gguf"_s, 50}, {u"b-00001-of-00003.gguf"_s, 90}}
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
    const auto found = choose(folder);
    QCOMPARE(found ? found->path : QString(), chosen.isEmpty() ? QString() : folder.filePath(chosen));
}

void ModelFilesTest::filesThatCannotBeReadArePassedOver()
{
    const QTemporaryDir folder;
    const QString old = write(folder, {u"old.gguf"_s, 100});
    QVERIFY(QDir(folder.path()).mkdir(u"folder.gguf"_s));
    QVERIFY(QFile::link(folder.filePath(u"nowhere"_s), folder.filePath(u"dangling.gguf"_s)));
    QCOMPARE(choose(folder)->path, old);

    // A link to a model elsewhere counts, with the time of the model.
    const QTemporaryDir elsewhere;
    QVERIFY(QFile::link(write(elsewhere, {u"model"_s, 10}), folder.filePath(u"link.gguf"_s)));
    QCOMPARE(choose(folder)->path, folder.filePath(u"link.gguf"_s));
}

void ModelFilesTest::builtInModelIsTheLastResort()
{
    const QTemporaryDir folder;
    const QTemporaryDir shipped;
    const QString first = shipped.filePath(u"first.gguf"_s);
    const QString second = write(shipped, {u"second.gguf"_s});
    const QString missing = folder.filePath(u"missing"_s);

    QVERIFY(!chooseModelFile(missing, {first}, moments));
    QVERIFY(!chooseModelFile(std::nullopt, {}, moments));
    QCOMPARE(chooseModelFile(std::nullopt, {first, second}, moments)->path, second);
    QCOMPARE(chooseModelFile(missing, {first, second}, moments)->path, second);
    const QString part = write(folder, {u"own-00001-of-00002.gguf"_s, 1000});
    QCOMPARE(choose(folder, {second})->path, second);
    QCOMPARE(choose(folder)->path, part);
    const QString own = write(folder, {u"own.gguf"_s, 2000});
    QCOMPARE(choose(folder, {second})->path, own);
}

void ModelFilesTest::splitModelChangesWithAnyPart()
{
    const QTemporaryDir folder;
    write(folder, {u"a-00001-of-00003.gguf"_s, 50, 10});
    write(folder, {u"a-00002-of-00003.gguf"_s, 40, 20});
    const auto incomplete = choose(folder);
    QCOMPARE(incomplete->size, 30);
    QVERIFY(!isSettled(*incomplete, {}, 1s));
    write(folder, {u"a-00003-of-00003.gguf"_s, 45, 30});
    const auto complete = choose(folder);
    QCOMPARE(complete->size, 60);
    QVERIFY(isSettled(*complete, {}, 1s));
    QCOMPARE(complete->modified, incomplete->modified);
    write(folder, {u"a-00002-of-00003.gguf"_s, 5, 20});
    QVERIFY(choose(folder)->modified > complete->modified);
}

void ModelFilesTest::projectorIsMatchedByItsName_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QStringList>("projectors");
    QTest::addColumn<QString>("matching"); // empty: none
    QTest::newRow("none") << u"a.gguf"_s << QStringList{} << QString();
    QTest::newRow("the only one") << u"a.gguf"_s << QStringList{u"mmproj-zzz.gguf"_s} << u"mmproj-zzz.gguf"_s;
    QTest::newRow("the longer part") << u"Cat-2-Mini-Q4.gguf"_s
                                     << QStringList{u"mmproj-cat-1-f16.gguf"_s, u"mmproj-CAT-2-MINI-f16.GGUF"_s,
                                                    u"mmproj-dog-mini-f16.gguf"_s}
                                     << u"mmproj-CAT-2-MINI-f16.GGUF"_s;
    QTest::newRow("as long") << u"cat.gguf"_s << QStringList{u"mmproj-cat-f16.gguf"_s, u"mmproj-cat-f32.gguf"_s}
                             << u"mmproj-cat-f16.gguf"_s;
    QTest::newRow("nothing but the ending")
        << u"cat.gguf"_s << QStringList{u"mmproj-dog.gguf"_s, u"mmproj-cow.gguf"_s} << QString();
    QTest::newRow("in the middle") << u"the-cat-model.gguf"_s << QStringList{u"dogs.gguf"_s, u"old-cats.gguf"_s}
                                   << u"old-cats.gguf"_s;
}

void ModelFilesTest::projectorIsMatchedByItsName()
{
    QFETCH(QString, model);
    QFETCH(QStringList, projectors);
    QFETCH(QString, matching);
    QCOMPARE(matchingProjector(model, projectors).value_or(QString()), matching);
}

void ModelFilesTest::projectorCountsAsPartOfTheModel()
{
    const QTemporaryDir folder;
    write(folder, {u"a.gguf"_s, 50});
    const auto alone = choose(folder);
    QVERIFY(!alone->projector);
    const QString path = write(folder, {u"eyes.gguf"_s, 1, 0, headOf("clip")});
    const auto young = choose(folder);
    QCOMPARE(young->projector->path, path);
    QVERIFY(!isSettled(*young, {}, moments));
    write(folder, {u"eyes.gguf"_s, 100, 0, headOf("clip")});
    const auto old = choose(folder);
    QVERIFY(isSettled(*old, {}, moments) && !isSettled(*old, young, moments));
    for (const auto &other : {alone, young})
        QVERIFY(*other != *old && isSameModel(*other, *old));

    // The same goes for the built-in model, in its own folder.
    const QTemporaryDir empty;
    QCOMPARE(choose(empty, {alone->path}), old);
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
    const auto before = choose(folder);
    QVERIFY(choose(folder) == before);

    QVERIFY(QFile::remove(path) && QFile::rename(folder.filePath(u"b"_s), path));
    const auto exchanged = choose(folder);
    QCOMPARE(exchanged->modified, before->modified);
    QVERIFY(exchanged->identity != before->identity);

    // Written over in place, and its time set back.
    QTest::qWait(50);
    write(folder, {u"a.gguf"_s});
    QVERIFY(setTime(path));
    const auto rewritten = choose(folder);
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
    const ModelFile file{{u"/a"_s, 10, old}, {}};

    QTest::addColumn<ModelFile>("file");
    QTest::addColumn<Look>("lookBefore");
    QTest::addColumn<bool>("settled");
    QTest::newRow("old, first look") << file << Look() << true;
    QTest::newRow("old, unchanged") << file << Look(file) << true;
    QTest::newRow("larger than before") << file << Look({{u"/a"_s, 9, old}, {}}) << false;
    QTest::newRow("other time than before") << file << Look({{u"/a"_s, 10, old - 1}, {}}) << false;
    QTest::newRow("another file before") << file << Look({{u"/b"_s, 9, old}, {}}) << true;
    QTest::newRow("just written") << ModelFile{{u"/a"_s, 10, now - 1000}, {}} << Look() << false;
    QTest::newRow("just written, unchanged")
        << ModelFile{{u"/a"_s, 10, now - 1000}, {}} << Look({{u"/a"_s, 10, now - 1000}, {}}) << false;
    QTest::newRow("from the future") << ModelFile{{u"/a"_s, 10, now + 3600000}, {}} << Look() << true;
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
