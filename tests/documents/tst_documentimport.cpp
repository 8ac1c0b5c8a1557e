// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/libraryfixture.h"
#include "platform/files/fulldisk.h"
#include "platform/files/identifier.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QTest>
#include <QThread>

#include <sys/fsuid.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace lumora;

namespace {

const QString noText = QStringLiteral("No readable text was found in this document. Scanned PDFs need OCR first.");

void makeSocket(const QString &path)
{
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof(address.sun_path));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) != 0)
        qFatal("cannot make a socket");
    ::close(socket);
}

} // namespace

class DocumentImportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<LibraryFixture>(); }

    void fileHasItsOutcome_data();
    void fileHasItsOutcome();
    void refusesWhatCannotBeCopied_data();
    void refusesWhatCannotBeCopied();
    void failsWithTheIndex_data();
    void failsWithTheIndex();
    void namesAndStoresAsGiven();
    void indexesTheBeginning_data();
    void indexesTheBeginning();
    void importsInTheOrderAskedFor();
    void hasNoStorage();
    void removesEverywhere();
    void closingLeavesNothingHalfDone();
    void closingKeepsAFinishedImport();

private:
    std::unique_ptr<LibraryFixture> m_fixture;
};

void DocumentImportTest::fileHasItsOutcome_data()
{
    QTest::addColumn<QByteArray>("content"); // or what the helper does, for a PDF
    QTest::addColumn<QString>("message");    // a part of it; empty where the file is imported
    QTest::addColumn<qsizetype>("copiesLeft");
    const auto add = [](const char *name, const QByteArray &content, const QString &message, qsizetype copiesLeft) {
        QTest::newRow(name) << content << message << copiesLeft;
    };
    const QString notUtf8 = notImported + "The document is not UTF-8 text";
    add("text", "The lease runs.", {}, 1);
    add("byte order mark", "\xEF\xBB\xBFThe lease runs.", {}, 1);
    add("zero bytes inside", QByteArray("The\0lease runs.", 15), {}, 1);
    add("empty", "", noText, 0);
    add("white space", " \n\t\r\n \xC2\xA0\xE2\x80\xA8", noText, 0);
    add("only a byte order mark", "\xEF\xBB\xBF", noText, 0);
    add("Latin-1", "caf\xE9", notUtf8, 1);
    add("UTF-16", QByteArray("\xFF\xFE\x61\0", 4), notUtf8, 1);
    add("cut in a character", "caf\xC3", notUtf8, 1);
    add("a surrogate", "\xED\xA0\x80", notUtf8, 1);
    add("PDF", "echo The lease runs.", {}, 1);
    add("PDF without text", "echo; echo ' '", noText, 0);
    add("PDF that cannot be opened", "echo The lease; exit 1", noText, 0);
    add("PDF, the helper cannot work", "exit 127", notImported + "PDF files cannot be read", 1);
}

void DocumentImportTest::fileHasItsOutcome()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QFETCH(qsizetype, copiesLeft);
    const bool isPdf = QByteArray(QTest::currentDataTag()).startsWith("PDF");
    if (isPdf)
        m_fixture->helperSays(content);
    const auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick(isPdf ? "Lease.PdF" : "notes.txt", content));
    QCOMPARE(library->errorMessage().left(message.size()), message);
    QCOMPARE(library->errorMessage().isNull(), message.isEmpty());
    QCOMPARE(library->documents().size(), message.isEmpty() ? 1 : 0);
    QCOMPARE(m_fixture->indexed(*library, "lease").size(), library->documents().size());
    QCOMPARE(m_fixture->open()->documents(), library->documents());
    QCOMPARE(m_fixture->copies().size(), copiesLeft);

    m_fixture->import(*library, m_fixture->pick("good.md", "a"));
    QVERIFY(library->errorMessage().isNull());
}

void DocumentImportTest::refusesWhatCannotBeCopied_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"gone.txt", "folder.txt", "pipe.txt", "socket.txt", "huge.txt", "huge.pdf",
                             "unreadable.txt", "large.txt on a full disk", "/dev/zero", "/proc/self/mem"})
        QTest::newRow(file) << QString(file);
}

void DocumentImportTest::refusesWhatCannotBeCopied()
{
    QFETCH(QString, file);
    QVERIFY(QDir(m_fixture->data.path()).mkpath("picked/folder.txt"));
    QCOMPARE(::mkfifo(QFile::encodeName(m_fixture->path("picked/pipe.txt")).constData(), 0600), 0);
    makeSocket(m_fixture->path("picked/socket.txt"));
    if (file.startsWith("huge") && !QFile::resize(m_fixture->pick(file, "a"), qint64{2} * 1024 * 1024 * 1024))
        QSKIP("this file system has no sparse file of that size");
    QVERIFY(QFile(m_fixture->pick("unreadable.txt", "a")).setPermissions({}));
    m_fixture->pick("large.txt on a full disk", QByteArray(200000, 'a'));
    std::optional<FullDisk> disk;
    if (file.endsWith("full disk"))
        disk.emplace(100000);

    if (file == "unreadable.txt") {
        QVERIFY(::chmod(QFile::encodeName(m_fixture->data.path()).constData(), 0777) == 0);
        setfsuid(65534); // permissions do not bind root; the library's thread is started with the same user
    }
    const auto library = m_fixture->open();
    m_fixture->import(*library, file.startsWith('/') ? file : m_fixture->path("picked/" + file));
    setfsuid(geteuid());
    if (file.endsWith("pdf"))
        QCOMPARE(library->errorMessage(), noText);
    else
        QVERIFY2(library->errorMessage().startsWith(notImported) && library->errorMessage().size() > notImported.size(),
                 qPrintable(library->errorMessage()));
    QVERIFY(library->documents().isEmpty());
    QVERIFY(QDir(m_fixture->path("Lumora/Documents")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));

    disk.reset();
    m_fixture->import(*library, m_fixture->pick("good.txt", "a"));
    QVERIFY(library->errorMessage().isNull());
}

void DocumentImportTest::failsWithTheIndex_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QString>("message");
    QTest::newRow("cannot be opened") << true << "The search index cannot be opened: something else has its name.";
    QTest::newRow("has no room left") << false << "The search index cannot be used: ";
}

void DocumentImportTest::failsWithTheIndex()
{
    QFETCH(bool, isFolder);
    QFETCH(QString, message);
    const auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick("first.txt", "lease"));
    std::optional<FullDisk> disk;
    if (isFolder)
        QVERIFY(QFile::rename(m_fixture->indexPath(), m_fixture->path("index")) &&
                QDir().mkpath(m_fixture->indexPath()));
    else
        disk.emplace(150000); // enough for the copy, not for its words
    const QString file = m_fixture->pick("second.txt", QByteArray("lease ").repeated(20000));
    m_fixture->import(*library, file);
    QVERIFY2(library->errorMessage().startsWith(notImported + message), qPrintable(library->errorMessage()));
    QCOMPARE(library->documents().size(), 1);
    QCOMPARE(m_fixture->open()->documents(), library->documents());
    QCOMPARE(m_fixture->copies().size(), 2);

    disk.reset();
    if (isFolder)
        QVERIFY(QDir().rmdir(m_fixture->indexPath()) &&
                QFile::rename(m_fixture->path("index"), m_fixture->indexPath()));
    QCOMPARE(m_fixture->indexed(*library, "lease").size(), 1);
    m_fixture->import(*library, file);
    QVERIFY(library->errorMessage().isNull());
    QCOMPARE(m_fixture->indexed(*library, "lease").size(), 2);
}

void DocumentImportTest::namesAndStoresAsGiven()
{
    const QString longest(218, 'e'); // with an identifier and a full stop before it, as long as a name can be
    const QStringList names{"NOTES.MD", "no extension", "two\nlines.txt", "\u202Egnp.txt",
                            "a.b.c",    ".hidden",      "x." + longest,   QString("\u00E9").repeated(125) + "xy.md"};
    const QStringList extensions{"md", "", "txt", "txt", "c", "hidden", longest, "md"};
    const auto library = m_fixture->open();
    for (qsizetype i = 0; i < names.size(); ++i) {
        m_fixture->import(*library, m_fixture->pick(names[i], "a"));
        QVERIFY2(library->errorMessage().isNull(), qPrintable(library->errorMessage()));
        const ImportedDocument &document = library->documents().last();
        QCOMPARE(document.name, names[i]);
        QCOMPARE(document.filename.mid(36), '.' + extensions[i]);
        QVERIFY(identifierText(document.id) != document.filename.left(36));
        QVERIFY(m_fixture->copies().contains(document.filename));
    }
    m_fixture->import(*library, m_fixture->path("picked/NOTES.MD"));
    QCOMPARE(library->documents().size(), names.size() + 1);
    m_fixture->import(*library, m_fixture->pick("x." + longest + 'e', "a"));
    QVERIFY2(library->errorMessage().endsWith("Rename the file and try again."), qPrintable(library->errorMessage()));
    QCOMPARE(m_fixture->copies().size(), names.size() + 1);
}

void DocumentImportTest::indexesTheBeginning_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("contentLength"); // code units
    QTest::addColumn<qsizetype>("descriptionLength");
    const QString family = QStringLiteral("👨‍👩‍👧‍👦");
    const qsizetype units = family.size();
    QTest::newRow("short") << "lease " + QString(593, 'a') << qsizetype(599) << qsizetype(599);
    QTest::newRow("just fits") << "lease " + QString(119994, 'a') << qsizetype(120000) << qsizetype(600);
    QTest::newRow("one more") << "lease " + QString(119995, 'a') << qsizetype(120000) << qsizetype(600);
    QTest::newRow("families") << "lease " + family.repeated(120000) << 6 + units * 119994 << 6 + units * 594;
    QTest::newRow("an endless character")
        << "lease a" + QString(5000000, QChar(0x0301)) << qsizetype(6) << qsizetype(6);
}

void DocumentImportTest::indexesTheBeginning()
{
    QFETCH(QString, text);
    QFETCH(qsizetype, contentLength);
    QFETCH(qsizetype, descriptionLength);
    const auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick("long.txt", text.toUtf8()));
    const QList<SearchableItem> items = m_fixture->indexed(*library, "lease");
    QCOMPARE(items.size(), 1);
    QCOMPARE(items.front().uniqueIdentifier, identifierText(library->documents().front().id));
    QCOMPARE(items.front().title, "long.txt");
    QVERIFY(items.front().textContent == QStringView(text).first(contentLength));
    QVERIFY(items.front().contentDescription == QStringView(text).first(descriptionLength));
}

void DocumentImportTest::importsInTheOrderAskedFor()
{
    m_fixture->helperSays("sleep 0.2; echo slow");
    const auto library = m_fixture->open();
    for (const char *name : {"1.pdf", "2.txt", "3.pdf", "4.txt"})
        library->add(QUrl::fromLocalFile(m_fixture->pick(name, "a")));
    // It is free for other work meanwhile.
    library->remove(ImportedDocument{.name = "never there", .filename = "x"});
    QTRY_COMPARE(library->documents().size(), 4);
    QStringList names;
    for (const ImportedDocument &document : library->documents())
        names.append(document.name);
    QCOMPARE(names, QStringList({"1.pdf", "2.txt", "3.pdf", "4.txt"}));
}

void DocumentImportTest::hasNoStorage()
{
    DocumentLibrary homeless(std::nullopt);
    homeless.add(QUrl::fromLocalFile(m_fixture->pick("a.txt", "a")));
    QCOMPARE(homeless.errorMessage(), "Document storage is unavailable.");

    // A file where the folder should be.
    QFile file(m_fixture->path("Lumora"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick("a.txt", "a"));
    QVERIFY(library->errorMessage().startsWith(notImported));
}

void DocumentImportTest::removesEverywhere()
{
    const auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick("a.txt", "lease"));
    m_fixture->import(*library, m_fixture->pick("b.txt", "lease"));
    const ImportedDocument removed = library->documents().front();
    library->remove(removed);
    QCOMPARE(library->documents().size(), 1);
    QCOMPARE(library->documents().front().name, "b.txt");
    QCOMPARE(m_fixture->open()->documents(), library->documents());
    QCOMPARE(m_fixture->copies(), QStringList(library->documents().front().filename));
    QTRY_COMPARE(m_fixture->indexed(*library, "lease").size(), 1);
    QCOMPARE(m_fixture->indexed(*library, "lease").front().title, "b.txt");

    library->remove(removed);
    QCOMPARE(library->documents().size(), 1);
    QVERIFY(library->errorMessage().isNull());
}

void DocumentImportTest::closingLeavesNothingHalfDone()
{
    m_fixture->helperSays("exec sleep 600");
    auto library = m_fixture->open();
    library->add(QUrl::fromLocalFile(m_fixture->pick("a.pdf", "a")));
    library->add(QUrl::fromLocalFile(m_fixture->pick("b.txt", "b")));
    QTRY_COMPARE(m_fixture->copies().size(), 1);
    library.reset();
    QVERIFY(m_fixture->copies().isEmpty());
    QVERIFY(m_fixture->open()->documents().isEmpty());
}

void DocumentImportTest::closingKeepsAFinishedImport()
{
    auto library = m_fixture->open();
    library->add(QUrl::fromLocalFile(m_fixture->pick("a.txt", "lease")));
    const QDeadlineTimer limit(30000);
    while (m_fixture->indexed(*library, "lease").isEmpty() && !limit.hasExpired())
        QThread::yieldCurrentThread(); // no event, which would tell the library that it has ended
    QVERIFY(library->documents().isEmpty());
    library.reset();
    library = m_fixture->open();
    QCOMPARE(library->documents().size(), 1);
    QCOMPARE(m_fixture->copies(), QStringList(library->documents().front().filename));
}

QTEST_GUILESS_MAIN(DocumentImportTest)
#include "tst_documentimport.moc"
