// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "enginequestions.h"
#include "platform/isolation/isolation.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace lumora;
using namespace lumora::wire;
using namespace Qt::StringLiterals;

namespace {

const QString projector = tiny("projector/mmproj-tiny");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray tinyBytes()
{
    return bytesOf(tiny());
}

QString write(const QTemporaryDir &folder, const QByteArray &bytes, const QString &name = "model.gguf")
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("the test's file cannot be written");
    return file.fileName();
}

/// The tiny model in two files, of which the first holds no tensors. The first one's path.
QString writeSplit(const QTemporaryDir &folder)
{
    const auto number = [](auto value) {
        return QByteArray(reinterpret_cast<const char *>(&value), qsizetype(sizeof value));
    };
    const auto text = [&](const QByteArray &characters) { return number(quint64(characters.size())) + characters; };
    const QByteArray whole = tinyBytes();
    const qsizetype tensors = whole.indexOf("blk.0.") - 8; // where their entries begin
    const auto tensorCount = qFromLittleEndian<quint64>(whole.constData() + 8);
    const auto entryCount = qFromLittleEndian<quint64>(whole.constData() + 16);
    const auto partEntries = [&](quint16 part) {
        return text("split.no") + number(quint32(2)) + number(part) + text("split.count") + number(quint32(2)) +
               number(quint16(2)) + text("split.tensors.count") + number(quint32(5)) + number(qint32(tensorCount));
    };
    QByteArray second = whole.left(8) + number(tensorCount) + number(quint64(4)) + partEntries(1);
    second += text("padding") + number(quint32(8));
    second += text(QByteArray((tensors - second.size() - 8) % 32, ' ')); // so that the rest is as well aligned
    write(folder, second + whole.mid(tensors), "model-00002-of-00002.gguf");
    return write(folder,
                 whole.left(8) + number(quint64(0)) + number(entryCount + 3) + whole.mid(24, tensors - 24) +
                     partEntries(0) + QByteArray(32, '\0'),
                 "model-00001-of-00002.gguf");
}

} // namespace

/// What the engine makes of files, good and bad.
class EngineFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsASplitModel()
    {
        const QTemporaryDir folder;
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        as<Finished>(service.ask(question("Hello")));
        const std::string text = service.text;
        as<Loaded>(service.load(writeSplit(folder)));
        as<Finished>(service.ask(question("Hello")));
        QCOMPARE(service.text, text);
    }

    void readsOnlyWhatItMay()
    {
        if (!missingIsolation().empty())
            QSKIP("this kernel does not isolate");
        const QTemporaryDir folder;
        QVERIFY(QFile::link(tiny(), folder.filePath("link.gguf")));
        ServiceProcess service(program, {"--reads", folder.filePath("link.gguf")});
        const auto failed = as<Failed>(service.load(write(folder, tinyBytes())));
        QCOMPARE(failed.code, ErrorCode::badFile);
        QVERIFY2(failed.message.find("cannot be read") != std::string::npos, failed.message.c_str());
        as<Loaded>(service.load(folder.filePath("link.gguf")));
        as<Finished>(service.ask(question("Hello")));
        QVERIFY(bytesOf(QStringLiteral("/proc/%1/status").arg(service.process.processId())).contains("Seccomp:\t2"));
    }

    void readsTextWithoutAProjector_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray whole = bytesOf(projector);
        QVERIFY(whole.size() > 10000);
        QByteArray narrow = whole;
        const QByteArray last = "mm.model.fc.weight";
        narrow[narrow.indexOf(last) + last.size() + 4 + 8] = 64; // after the number of its sides and the first one
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a language model") << tinyBytes();
        QTest::newRow("cut in the head") << whole.left(1000);
        QTest::newRow("last bytes missing") << whole.left(whole.size() - 100);
        QTest::newRow("missing tensor") << QByteArray(whole).replace("v.blk.0.ffn_up", "v.blk.0.ffn_xx");
        QTest::newRow("unknown kind") << QByteArray(whole).replace("idefics3", "idefics9");
        QTest::newRow("no eyes") << QByteArray(whole).replace("has_vision", "has_vixxon");
        QTest::newRow("of another model") << narrow;
    }

    void readsTextWithoutAProjector()
    {
        QFETCH(QByteArray, bytes);
        const QTemporaryDir folder;
        ServiceProcess service(program);
        const auto loaded = as<Loaded>(service.load(tiny(), {}, write(folder, bytes, "mmproj.gguf")));
        QVERIFY(!loaded.readsImages);
        QVERIFY2(loaded.description.find("mmproj.gguf") != std::string::npos, loaded.description.c_str());
        as<Finished>(service.ask(question("Hello")));
    }

    void tellsWhichProjectorCrashes()
    {
#ifndef READS_IMAGES
        QSKIP("the engine was built without libmtmd");
#endif
        const QTemporaryDir folder;
        ServiceProcess service(program);
        QByteArray crashing = bytesOf(projector);
        const QByteArray heads = "clip.vision.attention.head_count";
        crashing[crashing.indexOf(heads) + heads.size() + 4] = 5; // which do not divide what they share
        const auto failed = as<Failed>(service.load(tiny(), {}, write(folder, crashing, "mmproj.gguf")));
        QCOMPARE(failed.code, ErrorCode::badProjector);
        QVERIFY(failed.message.find("mmproj.gguf") != std::string::npos);
        QVERIFY(service.waitForEnd());
    }

    void refusesFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray whole = tinyBytes();
        QVERIFY(whole.size() > 100000);
        QTest::newRow("cut in half") << whole.left(whole.size() / 2);
        QTest::newRow("last bytes missing") << whole.left(whole.size() - 100);
        QTest::newRow("no vocabulary") << QByteArray(whole).replace("tokenizer.ggml.tokens", "tokenizer.ggml.tokxns");
        QTest::newRow("missing tensor") << QByteArray(whole).replace("blk.1.ffn_up", "blk.1.ffn_xx");
        QTest::newRow("no layers") << QByteArray(whole).replace("llama.block_count", "llama.block_xount");
    }

    void refusesFiles()
    {
        QFETCH(QByteArray, bytes);
        const QTemporaryDir folder;
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        const auto failed = as<Failed>(service.load(write(folder, bytes)));
        QCOMPARE(failed.code, ErrorCode::badFile);
        QVERIFY(failed.message.find("model.gguf") != std::string::npos);
        QCOMPARE(failure(service.ask(Count{1, "x"})), ErrorCode::notLoaded); // the earlier one is gone
        as<Loaded>(service.load(tiny()));
        as<Finished>(service.ask(question("Hello")));
    }

    void namesAnUnknownKind_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("named");
        QTest::newRow("unknown") << QByteArray("llxma") << QByteArray("“llxma”");
        QTest::newRow("not UTF-8") << QByteArray("ll\xFFma") << QByteArray("“ll\uFFFDma”");
    }

    void namesAnUnknownKind()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, named);
        const QTemporaryDir folder;
        ServiceProcess service(program);
        const auto failed = as<Failed>(service.load(write(folder, tinyBytes().replace("llama", kind))));
        QCOMPARE(failed.code, ErrorCode::badFile);
        QVERIFY2(failed.message.find(named.toStdString() + " are not known") != std::string::npos,
                 failed.message.c_str());
    }

    void survivesDamagedFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("model") << tiny();
        QTest::newRow("projector") << projector;
    }

    void survivesDamagedFiles()
    {
        QFETCH(QString, path);
        const QByteArray whole = bytesOf(path);
        const QTemporaryDir folder;
        auto service = std::make_unique<ServiceProcess>(program);
        quint32 random = 1;
        for (int i = 0; i < 60; ++i) {
            QByteArray damaged = whole;
            for (int k = 0; k < 3; ++k) {
                random = random * 1664525U + 1013904223U;
                damaged[qsizetype((random >> 8U) % 1500U)] = char(random >> 3U); // where the sizes stand
            }
            // Whatever it makes of the file, it says so, and is there for the next one at the latest after a new start.
            const QString written = write(folder, damaged);
            const Answer answer = path == projector ? service->load(tiny(), {}, written) : service->load(written);
            QVERIFY2(std::holds_alternative<Loaded>(answer) || failure(answer) != ErrorCode::internal,
                     encode(answer).c_str());
            if (std::holds_alternative<Failed>(answer) &&
                as<Failed>(answer).message.find("crashed") != std::string::npos) {
                QVERIFY(service->waitForEnd());
                service = std::make_unique<ServiceProcess>(program);
            }
        }
    }
};

QTEST_GUILESS_MAIN(EngineFilesTest)
#include "tst_enginefiles.moc"
