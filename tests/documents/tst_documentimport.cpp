// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"
#include "platform/files/identifier.h"
#include "platform/search/userquery.h"
#include "platform/text/graphemes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace lumora;

namespace {

const QString noText = QStringLiteral("No readable text was found in this document. Scanned PDFs need OCR first.");
const QString notImported = QStringLiteral("Could not import document: ");

} // namespace

class DocumentImportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void fileHasItsOutcome_data();
    void fileHasItsOutcome();
    void takesPdfsThroughTheHelper_data();
    void takesPdfsThroughTheHelper();
    void refusesWhatIsNoFile();
    void namesAndStoresAsGiven();
    void indexesTheBeginning_data();
    void indexesTheBeginning();
    void importsInTheOrderAskedFor();
    void failureOfTheIndexKeepsTheCopy();
    void hasNoStorage();
    void removesEverywhere();
    void closingLeavesNothingHalfDone();

private:
    QString pick(const QString &name, const QByteArray &content) const;
    void helperSays(const QByteArray &script) const;
    std::unique_ptr<DocumentLibrary> open() const;
    void import(DocumentLibrary &library, const QString &path) const;
    QStringList copies() const;
    QList<SearchableItem> indexed(const DocumentLibrary &library, const QString &query) const;

    std::unique_ptr<QTemporaryDir> m_data;
};

void DocumentImportTest::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    helperSays("exit 1");
}

QString DocumentImportTest::pick(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(m_data->filePath("picked"));
    QFile file(m_data->filePath("picked/" + name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(name));
    return file.fileName();
}

/// What stands in for the program that reads PDFs.
void DocumentImportTest::helperSays(const QByteArray &script) const
{
    QFile helper(m_data->filePath("helper"));
    if (!helper.open(QIODevice::WriteOnly) || !helper.write("#!/bin/sh\n" + script + "\n"))
        qFatal("cannot write the helper");
    helper.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

std::unique_ptr<DocumentLibrary> DocumentImportTest::open() const
{
    PdfTextReader pdf;
    pdf.helper = m_data->filePath("helper");
    return std::make_unique<DocumentLibrary>(m_data->path(), pdf);
}

void DocumentImportTest::import(DocumentLibrary &library, const QString &path) const
{
    library.add(QUrl::fromLocalFile(path));
    QTRY_VERIFY_WITH_TIMEOUT(!library.isImporting(), 30000);
}

QStringList DocumentImportTest::copies() const
{
    return QDir(m_data->filePath("Lumora/Documents"))
        .entryList(QDir::Files)
        .filter(QRegularExpression("^[0-9A-F-]{36}"));
}

QList<SearchableItem> DocumentImportTest::indexed(const DocumentLibrary &library, const QString &query) const
{
    UserQuery items(library.index(), query, {{"title", "textContent", "contentDescription"}, 8});
    QList<SearchableItem> found;
    while (const std::optional<SearchableItem> item = items.next())
        found.append(*item);
    return found;
}

void DocumentImportTest::fileHasItsOutcome_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message"); // a part of it; empty where the file is imported
    QTest::addColumn<qsizetype>("copiesLeft");
    const QString notUtf8 = notImported + "The document is not UTF-8 text";
    QTest::newRow("text") << QByteArray("The lease runs.") << "" << qsizetype(1);
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBFThe lease runs.") << "" << qsizetype(1);
    QTest::newRow("zero bytes inside") << QByteArray("The\0lease runs.", 15) << "" << qsizetype(1);
    QTest::newRow("empty") << QByteArray() << noText << qsizetype(0);
    QTest::newRow("white space") << QByteArray(" \n\t\r\n \xC2\xA0\xE2\x80\xA8") << noText << qsizetype(0);
    QTest::newRow("only a byte order mark") << QByteArray("\xEF\xBB\xBF") << noText << qsizetype(0);
    QTest::newRow("Latin-1") << QByteArray("caf\xE9") << notUtf8 << qsizetype(1);
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE"
                                          "a\0",
                                          4)
                            << notUtf8 << qsizetype(1);
    QTest::newRow("cut in a character") << QByteArray("caf\xC3") << notUtf8 << qsizetype(1);
    QTest::newRow("a surrogate") << QByteArray("\xED\xA0\x80") << notUtf8 << qsizetype(1);
}

void DocumentImportTest::fileHasItsOutcome()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QFETCH(qsizetype, copiesLeft);
    const auto library = open();
    import(*library, pick("notes.txt", content));
    QCOMPARE(library->errorMessage().left(message.size()), message);
    QCOMPARE(library->errorMessage().isNull(), message.isEmpty());
    QCOMPARE(library->documents().size(), message.isEmpty() ? 1 : 0);
    QCOMPARE(indexed(*library, "lease").size(), library->documents().size());
    QCOMPARE(open()->documents(), library->documents());
    QCOMPARE(copies().size(), copiesLeft);

    import(*library, pick("good.md", "a"));
    QVERIFY(library->errorMessage().isNull());
}

void DocumentImportTest::takesPdfsThroughTheHelper_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("message"); // a part of it; empty where the file is imported
    QTest::addColumn<qsizetype>("copiesLeft");
    QTest::newRow("text") << QByteArray("echo The lease runs.") << "" << qsizetype(1);
    QTest::newRow("no text") << QByteArray("echo; echo ' '") << noText << qsizetype(0);
    QTest::newRow("cannot be opened") << QByteArray("echo The lease; exit 1") << noText << qsizetype(0);
    QTest::newRow("helper cannot work") << QByteArray("exit 127") << notImported + "PDF files cannot be read"
                                        << qsizetype(1);
}

void DocumentImportTest::takesPdfsThroughTheHelper()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, message);
    QFETCH(qsizetype, copiesLeft);
    helperSays(script);
    const auto library = open();
    import(*library, pick("Lease.PdF", "caf\xE9"));
    QCOMPARE(library->errorMessage().left(message.size()), message);
    QCOMPARE(library->errorMessage().isNull(), message.isEmpty());
    QCOMPARE(copies().size(), copiesLeft);
    QCOMPARE(indexed(*library, "lease").size(), message.isEmpty() ? 1 : 0);
}

void DocumentImportTest::refusesWhatIsNoFile()
{
    QDir(m_data->path()).mkpath("folder.txt");
    QCOMPARE(::mkfifo(QFile::encodeName(m_data->filePath("pipe.txt")).constData(), 0600), 0);
    const QString huge = pick("huge.txt", "a");
    if (!QFile::resize(huge, qint64{2} * 1024 * 1024 * 1024))
        QSKIP("this file system has no sparse file of that size");

    const auto library = open();
    for (const QString &path : {m_data->filePath("gone.txt"), m_data->filePath("folder.txt"),
                                m_data->filePath("pipe.txt"), huge, QStringLiteral("/dev/zero")}) {
        import(*library, path);
        QVERIFY2(library->errorMessage().startsWith(notImported), qPrintable(path + ": " + library->errorMessage()));
    }
    QVERIFY(library->documents().isEmpty());
    QVERIFY(copies().isEmpty());
    QVERIFY(QDir(m_data->filePath("Lumora/Documents")).isEmpty());
}

void DocumentImportTest::namesAndStoresAsGiven()
{
    const QStringList names{"NOTES.MD",
                            "no extension",
                            "two\nlines.txt",
                            "\u202Egnp.txt",
                            "a.b.c",
                            ".hidden",
                            QString("é").repeated(125) + "x.md"};
    const QStringList extensions{"md", "", "txt", "txt", "c", "hidden", "md"};
    const auto library = open();
    for (qsizetype i = 0; i < names.size(); ++i) {
        import(*library, pick(names[i], "a"));
        QVERIFY2(library->errorMessage().isNull(), qPrintable(library->errorMessage()));
        const ImportedDocument &document = library->documents().last();
        QCOMPARE(document.name, names[i]);
        QCOMPARE(document.filename.mid(36), '.' + extensions[i]);
        QVERIFY(identifierText(document.id) != document.filename.left(36));
        QVERIFY(copies().contains(document.filename));
    }
    import(*library, m_data->filePath("picked/NOTES.MD"));
    QCOMPARE(library->documents().size(), names.size() + 1);
    QCOMPARE(copies().size(), names.size() + 1);
}

void DocumentImportTest::indexesTheBeginning_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("contentLength"); // code units
    QTest::addColumn<qsizetype>("descriptionLength");
    const QString family = QStringLiteral("👨‍👩‍👧‍👦");
    const qsizetype units = family.size();
    QTest::newRow("short") << "lease " + QString(593, 'a') << qsizetype(599) << qsizetype(599);
    QTest::newRow("just fits") << "lease " + QString(119'994, 'a') << qsizetype(120'000) << qsizetype(600);
    QTest::newRow("one more") << "lease " + QString(119'995, 'a') << qsizetype(120'000) << qsizetype(600);
    QTest::newRow("families") << "lease " + family.repeated(120'000) << 6 + units * 119'994 << 6 + units * 594;
}

void DocumentImportTest::indexesTheBeginning()
{
    QFETCH(QString, text);
    QFETCH(qsizetype, contentLength);
    QFETCH(qsizetype, descriptionLength);
    const auto library = open();
    import(*library, pick("long.txt", text.toUtf8()));
    const QList<SearchableItem> items = indexed(*library, "lease");
    QCOMPARE(items.size(), 1);
    QCOMPARE(items.front().uniqueIdentifier, identifierText(library->documents().front().id));
    QCOMPARE(items.front().title, "long.txt");
    QVERIFY(items.front().textContent == QStringView(text).first(contentLength));
    QVERIFY(items.front().contentDescription == QStringView(text).first(descriptionLength));
}

void DocumentImportTest::importsInTheOrderAskedFor()
{
    helperSays("sleep 0.2; echo slow");
    const auto library = open();
    for (const char *name : {"1.pdf", "2.txt", "3.pdf", "4.txt"})
        library->add(QUrl::fromLocalFile(pick(name, "a")));
    // It is free for other work meanwhile.
    library->remove(ImportedDocument{.name = "never there", .filename = "x"});
    QTRY_COMPARE(library->documents().size(), 4);
    QStringList names;
    for (const ImportedDocument &document : library->documents())
        names.append(document.name);
    QCOMPARE(names, QStringList({"1.pdf", "2.txt", "3.pdf", "4.txt"}));
}

void DocumentImportTest::failureOfTheIndexKeepsTheCopy()
{
    QVERIFY(QDir(m_data->path()).mkpath("Lumora/SearchIndex.sqlite/in the way"));
    const auto library = open();
    import(*library, pick("a.txt", "a"));
    QVERIFY(library->errorMessage().startsWith(notImported));
    QVERIFY(library->errorMessage().size() > notImported.size());
    QVERIFY(library->documents().isEmpty());
    QCOMPARE(copies().size(), 1);
}

void DocumentImportTest::hasNoStorage()
{
    DocumentLibrary homeless(std::nullopt);
    homeless.add(QUrl::fromLocalFile(pick("a.txt", "a")));
    QCOMPARE(homeless.errorMessage(), "Document storage is unavailable.");

    // A file where the folder should be.
    QFile file(m_data->filePath("Lumora"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto library = open();
    import(*library, pick("a.txt", "a"));
    QVERIFY(library->errorMessage().startsWith(notImported));
}

void DocumentImportTest::removesEverywhere()
{
    const auto library = open();
    import(*library, pick("a.txt", "lease"));
    import(*library, pick("b.txt", "lease"));
    const ImportedDocument removed = library->documents().front();
    library->remove(removed);
    QCOMPARE(library->documents().size(), 1);
    QCOMPARE(library->documents().front().name, "b.txt");
    QCOMPARE(open()->documents(), library->documents());
    QCOMPARE(copies(), QStringList(library->documents().front().filename));
    QTRY_COMPARE(indexed(*library, "lease").size(), 1);
    QCOMPARE(indexed(*library, "lease").front().title, "b.txt");

    library->remove(removed);
    QCOMPARE(library->documents().size(), 1);
    QVERIFY(library->errorMessage().isNull());
}

void DocumentImportTest::closingLeavesNothingHalfDone()
{
    helperSays("exec sleep 600");
    auto library = open();
    library->add(QUrl::fromLocalFile(pick("a.pdf", "a")));
    library->add(QUrl::fromLocalFile(pick("b.txt", "b")));
    QTRY_COMPARE(copies().size(), 1);
    library.reset();
    QVERIFY(copies().isEmpty());
    QVERIFY(open()->documents().isEmpty());
}

QTEST_GUILESS_MAIN(DocumentImportTest)
#include "tst_documentimport.moc"
