// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/ggufheader.h"

#include "core/failure.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <sys/stat.h>

using namespace lumora;
using namespace lumora::service;

namespace {

/// Writes the head of a model file, number by number.
class Writer
{
public:
    template <typename Value>
    Writer &number(Value value)
    {
        m_bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
        return *this;
    }
    Writer &text(const std::string &text)
    {
        number(std::uint64_t(text.size()));
        m_bytes.append(text.c_str(), qsizetype(text.size()));
        return *this;
    }
    Writer &head(std::uint64_t tensors, std::uint64_t entries, std::uint32_t version = 3)
    {
        m_bytes.append("GGUF");
        return number(version).number(tensors).number(entries);
    }
    Writer &entry(const std::string &key, const std::string &value)
    {
        return text(key).number(std::uint32_t(8)).text(value);
    }
    Writer &tensor(const std::string &name, std::uint64_t offset, std::uint32_t dimensions = 1)
    {
        text(name).number(dimensions);
        for (std::uint32_t i = 0; i < dimensions; ++i)
            number(std::uint64_t(4));
        return number(std::uint32_t(0)).number(offset);
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QByteArray modelBytes()
{
    Writer writer;
    writer.head(2, 5).entry("general.architecture", "llama");
    writer.text("split.count").number(std::uint32_t(2)).number(std::uint16_t(1));
    writer.text("some.flag").number(std::uint32_t(7)).number(std::uint8_t(1));
    writer.text("some.numbers").number(std::uint32_t(9)).number(std::uint32_t(6)).number(std::uint64_t(2));
    writer.number(1.0F).number(2.0F);
    writer.text("some.texts").number(std::uint32_t(9)).number(std::uint32_t(8)).number(std::uint64_t(2));
    writer.text("one").text("two");
    writer.tensor("a", 0).tensor("b", 32, 2);
    return writer.bytes() + QByteArray(64, '\0');
}

QByteArray partBytes(std::uint16_t number, std::uint16_t count)
{
    Writer writer;
    writer.head(1, 3).entry("general.architecture", "llama");
    writer.text("split.no").number(std::uint32_t(2)).number(number);
    writer.text("split.count").number(std::uint32_t(2)).number(count);
    return writer.tensor("a", 0).bytes();
}

} // namespace

class GgufHeaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatItNeeds()
    {
        const std::string path = write(modelBytes());
        const GgufHeader header = readModelHeader(path);
        QCOMPARE(header.architecture, std::string("llama"));
        QCOMPARE(header.splitCount, 1U);
        QCOMPARE(header.tensorCount, 2U);
        QCOMPARE(header.fileSize, modelBytes().size());
    }

    void everyCutIsNoticed()
    {
        const QByteArray whole = modelBytes();
        for (qsizetype size = 0; size < whole.size() - 64; ++size)
            QVERIFY2(isRefused(write(whole.left(size))), qPrintable(QString::number(size)));
        QVERIFY(isRefused(write(whole.left(whole.size() - 40)))); // before the second tensor
    }

    void everyChangedByteIsSurvived()
    {
        const QByteArray whole = modelBytes();
        for (qsizetype at = 0; at < whole.size() - 64; ++at) {
            for (const char value : {'\x09', '\xFF'}) {
                QByteArray changed = whole;
                changed[at] = value;
                const std::string path = write(changed);
                // Either verdict is right; a crash, a wait or a gigabyte of memory is not.
                try {
                    readGgufHeader(path);
                } catch (const Failure &failure) {
                    QCOMPARE(int(failure.code()), int(wire::ErrorCode::badFile));
                }
            }
        }
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, const Writer &writer) { QTest::newRow(name) << writer.bytes(); };
        constexpr std::uint64_t huge = 1ULL << 62U;
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("This is not a model.\n").repeated(10);
        row("version 1", Writer().head(0, 0, 1));
        row("other byte order", Writer().head(0, 0, 0x03000000));
        row("countless entries", Writer().head(1, huge));
        row("countless tensors", Writer().head(huge, 0));
        row("endless key", Writer().head(1, 1).number(huge));
        row("endless value", Writer().head(1, 1).text("k").number(std::uint32_t(8)).number(huge));
        row("unknown type", Writer().head(1, 1).text("k").number(std::uint32_t(13)).number(huge));
        row("endless array",
            Writer().head(1, 1).text("k").number(std::uint32_t(9)).number(std::uint32_t(10)).number(huge));
        row("array of arrays",
            Writer().head(1, 1).text("k").number(std::uint32_t(9)).number(std::uint32_t(9)).number(std::uint64_t(1)));
        row("tensor of many dimensions", Writer().head(1, 1).entry("general.architecture", "llama").tensor("a", 0, 5));
        row("tensor behind the end", Writer().head(1, 1).entry("general.architecture", "llama").tensor("a", 4096));
        row("no architecture", Writer().head(1, 0).tensor("a", 0));
        row("no tensors", Writer().head(0, 1).entry("general.architecture", "llama"));
        row("image part", Writer().head(1, 1).entry("general.architecture", "clip").tensor("a", 0));
        QTest::newRow("split, but not named so") << partBytes(0, 3);
        QTest::newRow("second part") << partBytes(1, 3);
    }

    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(isRefused(write(bytes)));
    }

    void readsAllPartsOfASplitModel()
    {
        const QString pattern = "model-0000%1-of-00003.gguf";
        const std::string first = write(partBytes(0, 3), pattern.arg(1));
        write(partBytes(1, 3) + QByteArray(1000, 'x'), pattern.arg(2));
        QVERIFY(isRefused(first)); // the third is missing
        const std::string third = write(partBytes(2, 3).chopped(1), pattern.arg(3));
        QVERIFY(isRefused(first)); // the third is cut off
        write(partBytes(2, 3), pattern.arg(3));
        QCOMPARE(readModelHeader(first).fileSize, 3 * partBytes(0, 3).size() + 1000);
        QVERIFY(isRefused(third));
    }

    void doesNotWaitOnAPipe()
    {
        const std::string path = m_folder.filePath("pipe-model.gguf").toStdString();
        QCOMPARE(mkfifo(path.c_str(), 0600), 0);
        QVERIFY(isRefused(path));
        QVERIFY(isRefused(m_folder.filePath("missing-model.gguf").toStdString()));
        QVERIFY(QDir(m_folder.path()).mkdir("folder-model.gguf"));
        QVERIFY(isRefused(m_folder.filePath("folder-model.gguf").toStdString()));
    }

private:
    std::string write(const QByteArray &bytes, const QString &name = "model.gguf")
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("the test's file cannot be written");
        return file.fileName().toStdString();
    }
    static bool isRefused(const std::string &path)
    {
        try {
            readModelHeader(path);
        } catch (const Failure &failure) {
            return failure.code() == wire::ErrorCode::badFile && failure.message().find("model") != std::string::npos;
        }
        return false;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(GgufHeaderTest)
#include "ggufheadertest.moc"
