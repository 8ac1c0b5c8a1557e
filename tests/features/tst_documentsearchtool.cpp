// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"
#include "features/documentsearchtool.h"
#include "platform/files/identifier.h"
#include "platform/model/childprocesses.h"
#include "platform/model/errors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <future>

using namespace lumora;

namespace {

const QString nothingFound = QStringLiteral("No matching imported documents were found.");

} // namespace

class DocumentSearchToolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void reportsWhatTheIndexKnows();
    void readsTheFilesWhereTheIndexKnowsNothing_data();
    void readsTheFilesWhereTheIndexKnowsNothing();
    void skipsWhatIsNoLongerThere();
    void failsWithTheIndex();
    void stopsReading();
    void isOfferedWithDocumentsOnly();

private:
    void addItem(const QString &id, const QString &title, const QString &text);
    void addFile(const QString &name, const QByteArray &content);
    QString call(const QString &query) const { return m_tool.call({.text = query}, {}); }

    std::unique_ptr<QTemporaryDir> m_folder;
    DocumentSearchTool m_tool;
};

void DocumentSearchToolTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_tool = {};
    m_tool.directory = m_folder->path();
    m_tool.index = std::make_shared<SearchIndex>(m_folder->filePath("index"));
}

void DocumentSearchToolTest::addItem(const QString &id, const QString &title, const QString &text)
{
    QVERIFY(!m_tool.index->indexSearchableItems({{id, "domain", title, text, {}}}).result());
}

/// A document whose stored copy is all that there is of it.
void DocumentSearchToolTest::addFile(const QString &name, const QByteArray &content)
{
    const ImportedDocument document{.name = name, .filename = QString::number(m_tool.documents.size()) + ".txt"};
    m_tool.documents.append(document);
    QFile file(m_folder->filePath(document.filename));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void DocumentSearchToolTest::reportsWhatTheIndexKnows()
{
    for (int i = 0; i < 4; ++i) {
        addFile("unused", "");
        addItem(identifierText(m_tool.documents.last().id), QString("Lease %1").arg(i), "No pets.\nReally.");
    }
    const QString result = call("What about pets?");
    QCOMPARE(result.count("Document: Lease "), 3);
    QCOMPARE(result.count("\nExcerpt: No pets.\nReally."), 3);
    QCOMPARE(result.count("\n\n"), 2);
    QVERIFY(result.startsWith("Document: ") && result.endsWith("Really."));

    addFile("untitled", "");
    addItem(identifierText(m_tool.documents.last().id), QString(), "Parking is free.");
    QCOMPARE(call("parking"), "Document: Document\nExcerpt: Parking is free.");
}

void DocumentSearchToolTest::readsTheFilesWhereTheIndexKnowsNothing_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("result");
    QTest::newRow("text") << "PETS and more"
                          << "Document: b\nExcerpt: All pets.";
    QTest::newRow("name only") << "leases"
                               << "Document: Leases.TXT\nExcerpt: caf";
    QTest::newRow("one letter is a term") << "z"
                                          << "Document: d\nExcerpt: z 1";
    QTest::newRow("the first three")
        << "1"
        << "Document: d\nExcerpt: z 1\n\nDocument: e\nExcerpt: 1\n\nDocument: f\nExcerpt: 1";
    QTest::newRow("name of a file that is gone") << "gone"
                                                 << "Document: gone\nExcerpt: ";
    QTest::newRow("no terms") << "?! " << nothingFound;
    QTest::newRow("no match") << "nowhere" << nothingFound;
}

void DocumentSearchToolTest::readsTheFilesWhereTheIndexKnowsNothing()
{
    QFETCH(QString, query);
    QFETCH(QString, result);
    addFile("Leases.TXT", "caf");
    addFile("b", "All pets.");
    addFile("latin", "nowhere caf\xE9");
    addFile("d", "z 1");
    addFile("e", "1");
    addFile("f", "1");
    addFile("g", "1");
    addFile("gone", "1");
    QVERIFY(QFile::remove(m_folder->filePath(m_tool.documents.last().filename)));
    QCOMPARE(call(query), result);
}

void DocumentSearchToolTest::skipsWhatIsNoLongerThere()
{
    // As where its deletion failed.
    addItem(identifierText(QUuid::createUuid()), "Removed", "No pets.");
    QCOMPARE(call("pets"), nothingFound);
    addFile("unused", "");
    addItem(identifierText(m_tool.documents.last().id), "Lease", "Pets are welcome in the whole house.");
    QCOMPARE(call("pets"), "Document: Lease\nExcerpt: Pets are welcome in the whole house.");
}

void DocumentSearchToolTest::failsWithTheIndex()
{
    addFile("b", "All pets.");
    QVERIFY(QDir(m_folder->path()).mkpath("index/in the way"));
    QVERIFY_THROWS_EXCEPTION(ModelError, call("pets"));
}

void DocumentSearchToolTest::stopsReading()
{
    QFile helper(m_folder->filePath("helper"));
    QVERIFY(helper.open(QIODevice::WriteOnly) && helper.write("#!/bin/sh\nexec sleep 600\n") > 0);
    QVERIFY(helper.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    helper.close();
    m_tool.pdf = {.helper = helper.fileName()};
    for (const char *name : {"1.pdf", "2.pdf"}) {
        addFile(name, "any");
        QVERIFY(QFile::rename(m_folder->filePath(m_tool.documents.last().filename), m_folder->filePath(name)));
        m_tool.documents.last().filename = name;
    }
    std::stop_source stop;
    std::future<QString> result =
        std::async(std::launch::async, [&] { return m_tool.call({.text = "pets"}, stop.get_token()); });
    QTRY_VERIFY(!childProcesses().isEmpty());
    stop.request_stop();
    QCOMPARE(result.get(), nothingFound);
    QVERIFY(childProcesses().isEmpty());
}

void DocumentSearchToolTest::isOfferedWithDocumentsOnly()
{
    QVERIFY(!searchTool(DocumentLibrary(std::nullopt)));
    DocumentLibrary library(m_folder->path());
    QVERIFY(!searchTool(library));

    QFile picked(m_folder->filePath("a.txt"));
    QVERIFY(picked.open(QIODevice::WriteOnly) && picked.write("pets") == 4);
    picked.close();
    library.add(QUrl::fromLocalFile(picked.fileName()));
    QTRY_COMPARE(library.documents().size(), 1);
    const std::optional<DocumentSearchTool> tool = searchTool(library);
    QVERIFY(tool);
    QCOMPARE(tool->documents, library.documents());
    QCOMPARE(tool->call({.text = "pets"}, {}), "Document: a.txt\nExcerpt: pets");
    const auto &properties = DocumentSearchTool::Arguments::generationSchema().properties;
    QCOMPARE(properties.size(), 1);
    QCOMPARE(properties.front().name, "query");
    QCOMPARE(properties.front().description, "A short search phrase with the important names and concepts");
}

QTEST_GUILESS_MAIN(DocumentSearchToolTest)
#include "tst_documentsearchtool.moc"
