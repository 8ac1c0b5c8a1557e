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

std::optional<ModelFile> choose(const QTemporaryDir &folder, const QString &builtIn = {})
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
    void newestModelIsChosen_data()
    {
        QTest::addColumn<QList<TestFile>>("files");
        QTest::addColumn<QString>("chosen"); // empty: none

        const auto row = [](const char *name, const QList<TestFile> &files, const QString &chosen) {
            QTest::newRow(name) << files << chosen;
        };
        row("empty folder", {}, QString());
        row("newest", {{"a.gguf", 50}, {"b.gguf", 10}, {"c.gguf", 90}}, "b.gguf");
        row("same time", {{"a.gguf", 50}, {"b.gguf", 50}}, "b.gguf");
        row("upper case", {{"A.GGUF", 50}}, "A.GGUF");
        row("odd name", {{"ein Mödell (1).gguf", 50}}, "ein Mödell (1).gguf");
        row("other endings", {{"a.gguf.part", 1}, {"a.bin", 1}, {"gguf", 1}}, QString());
        row("hidden", {{".a.gguf", 1}}, QString());
        row("image projector", {{"a.gguf", 50}, {"mmproj-a.gguf", 10}}, "a.gguf");
        row("projector by what it is", {{"a.gguf", 50}, {"b.gguf", 10, 0, headOf("clip")}}, "a.gguf");
        row("projector that is being written", {{"a.gguf", 50}, {"mmproj-b.gguf", 1, 0, headOf("clip").left(70)}},
            "a.gguf");
        row("model that is called like a projector", {{"a.gguf", 50}, {"mmproj-b.gguf", 10, 0, headOf("llama")}},
            "mmproj-b.gguf");
        row("parts, the later newer", {{"a-00001-of-00002.gguf", 50}, {"a-00002-of-00002.gguf", 10}},
            "a-00001-of-00002.gguf");
        row("a part makes its model the newest",
            {{"a-00001-of-00002.gguf", 50}, {"a-00002-of-00002.gguf", 10}, {"b.gguf", 30}}, "a-00001-of-00002.gguf");
        row("a part is missing", {{"a-00001-of-00002.gguf", 50}, {"b.gguf", 90}}, "b.gguf");
        row("a part is still to come", {{"a-00001-of-00002.gguf", 1}, {"b.gguf", 90}}, "a-00001-of-00002.gguf");
        row("parts of both are missing", {{"a-00001-of-00002.gguf", 50}, {"b-00001-of-00003.gguf", 90}},
            "a-00001-of-00002.gguf");
        row("later part alone", {{"a-00002-of-00002.gguf", 10}}, QString());
        row("more parts than a model has", {{"a-00002-of-99999.gguf", 10}}, "a-00002-of-99999.gguf");
        row("like a part", {{"a-2-of-3.gguf", 10}}, "a-2-of-3.gguf");
    }

    void newestModelIsChosen()
    {
        QFETCH(QList<TestFile>, files);
        QFETCH(QString, chosen);
        const QTemporaryDir folder;
        for (const TestFile &file : files)
            write(folder, file);
        const auto found = choose(folder);
        QCOMPARE(found ? found->path : QString(), chosen.isEmpty() ? QString() : folder.filePath(chosen));
    }

    void filesThatCannotBeReadArePassedOver()
    {
        const QTemporaryDir folder;
        const QString old = write(folder, {"old.gguf", 100});
        QVERIFY(QDir(folder.path()).mkdir("folder.gguf"));
        QVERIFY(QFile::link(folder.filePath("nowhere"), folder.filePath("dangling.gguf")));
        QCOMPARE(choose(folder)->path, old);

        // A link to a model elsewhere counts, with the time of the model.
        const QTemporaryDir elsewhere;
        QVERIFY(QFile::link(write(elsewhere, {"model", 10}), folder.filePath("link.gguf")));
        QCOMPARE(choose(folder)->path, folder.filePath("link.gguf"));
    }

    void builtInModelIsTheLastResort()
    {
        const QTemporaryDir folder;
        const QTemporaryDir shipped;
        const QString builtIn = write(shipped, {"builtin.gguf"});
        const QString missing = folder.filePath("missing");

        QVERIFY(!chooseModelFile(missing, shipped.filePath("missing.gguf"), moments));
        QVERIFY(!chooseModelFile(std::nullopt, {}, moments));
        QCOMPARE(chooseModelFile(std::nullopt, builtIn, moments)->path, builtIn);
        QCOMPARE(chooseModelFile(missing, builtIn, moments)->path, builtIn);
        const QString part = write(folder, {"own-00001-of-00002.gguf", 1000});
        QCOMPARE(choose(folder, builtIn)->path, builtIn);
        QCOMPARE(choose(folder)->path, part);
        const QString own = write(folder, {"own.gguf", 2000});
        QCOMPARE(choose(folder, builtIn)->path, own);
    }

    void splitModelChangesWithAnyPart()
    {
        const QTemporaryDir folder;
        write(folder, {"a-00001-of-00003.gguf", 50, 10});
        write(folder, {"a-00002-of-00003.gguf", 40, 20});
        const auto incomplete = choose(folder);
        QCOMPARE(incomplete->size, 30);
        QVERIFY(!isSettled(*incomplete, {}, 1s));
        write(folder, {"a-00003-of-00003.gguf", 45, 30});
        const auto complete = choose(folder);
        QCOMPARE(complete->size, 60);
        QVERIFY(isSettled(*complete, {}, 1s));
        QCOMPARE(complete->parts.size(), 3);
        QCOMPARE(complete->parts.last(), folder.filePath("a-00003-of-00003.gguf"));
        QCOMPARE(complete->modified, incomplete->modified);
        write(folder, {"a-00002-of-00003.gguf", 5, 20});
        QVERIFY(choose(folder)->modified > complete->modified);
    }

    void projectorIsMatchedByItsName_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QStringList>("projectors");
        QTest::addColumn<QString>("matching"); // empty: none
        const auto row = [](const char *name, const QString &model, const QStringList &projectors,
                            const QString &matching) { QTest::newRow(name) << model << projectors << matching; };
        row("none", "a.gguf", {}, QString());
        row("the only one", "a.gguf", {"mmproj-zzz.gguf"}, "mmproj-zzz.gguf");
        row("the longer part", "Cat-2-Mini-Q4.gguf",
            {"mmproj-cat-1-f16.gguf", "mmproj-CAT-2-MINI-f16.GGUF", "mmproj-dog-mini-f16.gguf"},
            "mmproj-CAT-2-MINI-f16.GGUF");
        row("as long", "cat.gguf", {"mmproj-cat-f16.gguf", "mmproj-cat-f32.gguf"}, "mmproj-cat-f16.gguf");
        row("nothing but the ending", "cat.gguf", {"mmproj-dog.gguf", "mmproj-cow.gguf"}, QString());
        row("in the middle", "the-cat-model.gguf", {"dogs.gguf", "old-cats.gguf"}, "old-cats.gguf");
    }

    void projectorIsMatchedByItsName()
    {
        QFETCH(QString, model);
        QFETCH(QStringList, projectors);
        QFETCH(QString, matching);
        QCOMPARE(matchingProjector(model, projectors).value_or(QString()), matching);
    }

    void projectorCountsAsPartOfTheModel()
    {
        const QTemporaryDir folder;
        write(folder, {"a.gguf", 50});
        const auto alone = choose(folder);
        QVERIFY(!alone->projector);
        const QString path = write(folder, {"eyes.gguf", 1, 0, headOf("clip")});
        const auto young = choose(folder);
        QCOMPARE(young->projector->path, path);
        QVERIFY(!isSettled(*young, {}, moments));
        write(folder, {"eyes.gguf", 100, 0, headOf("clip")});
        const auto old = choose(folder);
        QVERIFY(isSettled(*old, {}, moments) && !isSettled(*old, young, moments));
        for (const auto &other : {alone, young})
            QVERIFY(*other != *old && isSameModel(*other, *old));

        // The same goes for the built-in model, in its own folder.
        const QTemporaryDir empty;
        QCOMPARE(choose(empty, {alone->path}), old);
    }

    void exchangedFileIsNoticed()
    {
        const QTemporaryDir folder;
        const QString path = write(folder, {"a.gguf", 50});
        write(folder, {"b"});
        const auto setTime = [](const QString &name) {
            QFile file(name);
            return file.open(QIODevice::ReadWrite) &&
                   file.setFileTime(QDateTime::fromSecsSinceEpoch(1000000), QFileDevice::FileModificationTime);
        };
        QVERIFY(setTime(path) && setTime(folder.filePath("b")));
        const auto before = choose(folder);
        QVERIFY(choose(folder) == before);

        QVERIFY(QFile::remove(path) && QFile::rename(folder.filePath("b"), path));
        const auto exchanged = choose(folder);
        QCOMPARE(exchanged->modified, before->modified);
        QVERIFY(exchanged->identity != before->identity);

        // Written over in place, and its time set back.
        QTest::qWait(50);
        write(folder, {"a.gguf"});
        QVERIFY(setTime(path));
        const auto rewritten = choose(folder);
        QCOMPARE(rewritten->modified, before->modified);
        QCOMPARE(rewritten->identity, exchanged->identity);
        QVERIFY(rewritten->touched > exchanged->touched);
    }

    void unreadableFileIsNamed()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("gone.gguf");
        QVERIFY(!unreadableModelFile(folder.path(), path));
        QVERIFY(!unreadableModelFile(folder.filePath("missing"), {}));
        QVERIFY(QFile::link(folder.filePath("nowhere"), path));
        QCOMPARE(unreadableModelFile(folder.path(), {}), path);
        QCOMPARE(unreadableModelFile(std::nullopt, path), path);
    }

    void fileSettles_data()
    {
        using Look = std::optional<ModelFile>;
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        const qint64 old = now - 3600000;
        const ModelFile file{{"/a", 10, old}, {}};

        QTest::addColumn<ModelFile>("file");
        QTest::addColumn<Look>("lookBefore");
        QTest::addColumn<bool>("settled");
        QTest::newRow("old, first look") << file << Look() << true;
        QTest::newRow("old, unchanged") << file << Look(file) << true;
        QTest::newRow("larger than before") << file << Look({{"/a", 9, old}, {}}) << false;
        QTest::newRow("other time than before") << file << Look({{"/a", 10, old - 1}, {}}) << false;
        QTest::newRow("another file before") << file << Look({{"/b", 9, old}, {}}) << true;
        QTest::newRow("just written") << ModelFile{{"/a", 10, now - 1000}, {}} << Look() << false;
        QTest::newRow("just written, unchanged")
            << ModelFile{{"/a", 10, now - 1000}, {}} << Look({{"/a", 10, now - 1000}, {}}) << false;
        QTest::newRow("from the future") << ModelFile{{"/a", 10, now + 3600000}, {}} << Look() << true;
    }

    void fileSettles()
    {
        QFETCH(ModelFile, file);
        QFETCH(std::optional<ModelFile>, lookBefore);
        QFETCH(bool, settled);
        // The limit is far from both sides, so that a slow machine changes nothing.
        QCOMPARE(isSettled(file, lookBefore, 10min), settled);
    }
};

QTEST_GUILESS_MAIN(ModelFilesTest)
#include "modelfilestest.moc"
