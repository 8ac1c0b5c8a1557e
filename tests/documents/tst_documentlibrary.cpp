// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"
#include "documents/listfile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class DocumentLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodesKeysInOrder();
    void refusesTheWholeListForOneFault_data();
    void refusesTheWholeListForOneFault();
    void loadsAndSavesTheList();
    void setsAnUnreadableListAside();
    void staysInMemoryWithoutAFolder();
};

void DocumentLibraryTest::encodesKeysInOrder()
{
    const ImportedDocument document{.id = QUuid::fromString(QStringLiteral("0f8fad5b-d9cb-469f-a165-70867728950e")),
                                    .name = "Lease \"2026\".PDF",
                                    .filename = "A.pdf",
                                    .addedAt = {806198400.25}};
    const QByteArray bytes = encodeDocuments({document});
    QCOMPARE(
        bytes,
        R"([{"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Lease \"2026\".PDF","filename":"A.pdf","addedAt":806198400.25}])");
    QCOMPARE(decodeDocuments(bytes), QList{document});
    QCOMPARE(decodeDocuments("[]"), QList<ImportedDocument>());
}

void DocumentLibraryTest::refusesTheWholeListForOneFault_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("instead");
    for (const char *key : {"id", "name", "filename", "addedAt"})
        QTest::addRow("no %s", key) << QByteArray('"' + QByteArray(key) + '"') << QByteArray(R"("other")");
    QTest::newRow("addedAt as text") << QByteArray(R"("addedAt":1)") << QByteArray(R"("addedAt":"1")");
    QTest::newRow("bad id") << QByteArray("0F8FAD5B-") << QByteArray();
}

void DocumentLibraryTest::refusesTheWholeListForOneFault()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, instead);
    const QByteArray first = R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"a","filename":"b","addedAt":1})";
    const QByteArray second = QByteArray(first).replace(key, instead);
    QCOMPARE(decodeDocuments('[' + first + ',' + first + ']')->size(), 2);
    QCOMPARE(decodeDocuments('[' + first + ',' + second + ']'), std::nullopt);
}

/// Where it was written to.
static QString listFile(const QTemporaryDir &data, const QByteArray &bytes)
{
    QDir(data.path()).mkpath("Lumora/Documents");
    QFile file(data.filePath("Lumora/Documents/documents.json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write the list");
    return file.fileName();
}

void DocumentLibraryTest::loadsAndSavesTheList()
{
    const QTemporaryDir data;
    const QList<ImportedDocument> documents{{.name = "notes.md", .filename = "1.md"},
                                            {.name = "b.txt", .filename = "2.txt"}};
    QFile file(listFile(data, encodeDocuments(documents)));
    DocumentLibrary library(data.path());
    QCOMPARE(library.documents(), documents);
    QVERIFY(file.remove());
    library.save();
    QCOMPARE(DocumentLibrary(data.path()).documents(), documents);
}

void DocumentLibraryTest::setsAnUnreadableListAside()
{
    const QTemporaryDir data;
    QFile file(listFile(data, "{broken"));
    DocumentLibrary library(data.path());
    QVERIFY(library.documents().isEmpty());
    QVERIFY(library.errorMessage().isNull());
    QVERIFY(file.exists());
    library.save();
    QFile aside(data.filePath("Lumora/Documents/documents.unreadable-1.json"));
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), "{broken");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "[]");
}

void DocumentLibraryTest::staysInMemoryWithoutAFolder()
{
    DocumentLibrary homeless(std::nullopt);
    QVERIFY(!homeless.storageDirectory());
    homeless.save();

    const QTemporaryDir data;
    DocumentLibrary library(data.path());
    QCOMPARE(library.storageDirectory(), data.filePath("Lumora/Documents"));
    library.save();
    QVERIFY(QDir(data.path()).isEmpty());
}

QTEST_GUILESS_MAIN(DocumentLibraryTest)
#include "tst_documentlibrary.moc"
