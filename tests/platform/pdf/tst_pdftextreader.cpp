// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/childprocesses.h"
#include "platform/pdf/pdftextreader.h"
#include "platform/pdf/pdfwriter.h"
#include "platform/process/helperanswer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <future>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace lumora;
using namespace std::chrono_literals;

namespace {

// Longer than ctest waits for a test.
constexpr std::chrono::milliseconds longTime = 1h;

QByteArray page(const QString &line)
{
    return pdfLines({line});
}

/// Two columns whose lines stand in the file from left to right, as a typesetting program may write them.
QByteArray columns()
{
    QByteArray content;
    for (int line = 1; line <= 6; ++line) {
        const QString number = QString::number(line);
        content += pdfLines({"left column line " + number}, 72, 720 - 14 * line);
        content += pdfLines({"right column line " + number}, 330, 720 - 14 * line);
    }
    return pdfWithPages({content});
}

/// The font says itself which characters its codes stand for.
QByteArray mapped()
{
    return pdfWithPages({page("ABC")}, "/ToUnicode 4 0 R",
                        "begincmap 1 begincodespacerange <00> <FF> endcodespacerange\n"
                        "3 beginbfchar <41> <65E5> <42> <D83DDE00> <43> <D83D> endbfchar endcmap");
}

/// One page, object 3, below a node, object 2, with these children.
QByteArray withPageTree(const QByteArray &kids, const QByteArray &trailer = {})
{
    PdfWriter writer;
    writer.add("<</Type/Catalog/Pages 2 0 R>>");
    writer.add("<</Type/Pages/Count 1/Kids[" + kids + "]>>");
    writer.add("<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>");
    writer.addStream(page("a page"));
    writer.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    writer.add("<</Filter/Standard/V 1/R 2/P -4/O<" + QByteArray(64, '1') + ">/U<" + QByteArray(64, '2') + ">>>");
    return writer.bytes(trailer);
}

QByteArray scanned()
{
    return pdfWithPages({"q 612 0 0 792 0 0 cm BI /W 1 /H 1 /BPC 8 /CS /G ID x EI Q"});
}

/// A small file whose page takes hours: words that all lie on each other.
QByteArray slow()
{
    const QByteArray word = "1 0 0 1 72 720 Tm (boom) Tj\n";
    return pdfWithPages({"BT /F 9 Tf " + word.repeated(1'000'000) + "ET"});
}

/// A small file with a list of millions of numbers beside its one word.
QByteArray large()
{
    return pdfWithPages({"BT /F 9 Tf 72 720 Td (word) Tj [" + QByteArray("0 ").repeated(5'000'000) + "] TJ ET"});
}

qsizetype openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}

/// Empty where there is no such process, or only what is left of one.
QByteArray commandLine(const QString &process)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(process));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class PdfTextReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsPages_data();
    void readsPages();
    void keepsTheLimits_data();
    void keepsTheLimits();
    void readsOnlyFiles();
    void survivesTheHelper_data();
    void survivesTheHelper();
    void saysThatNoFileCanBeRead_data();
    void saysThatNoFileCanBeRead();
    void endsWhatTheHelperStarted();
    void stopsAtOnce();
    void readsSeveralAtOnce();
    void helperEndsWithItsProgram();
    void cleanup();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString written(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }
    /// A helper that does what this script says.
    QString script(const QByteArray &commands) const
    {
        const QString name = written("helper", "#!/bin/sh\n" + commands);
        QFile::setPermissions(name, QFile::ReadOwner | QFile::ExeOwner);
        return name;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    qsizetype m_openFiles = 0;
    const PdfTextReader m_reader{.helper = QStringLiteral(PDF_HELPER), .limits = {.time = longTime}};
};

void PdfTextReaderTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_openFiles = openFiles();
}

void PdfTextReaderTest::cleanup()
{
    QCOMPARE(childProcesses(), QList<int>());
    QCOMPARE(openFiles(), m_openFiles);
}

void PdfTextReaderTest::readsPages_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text");

    const QByteArray two = pdfWithPages({page("first page"), page("second page")});
    QTest::newRow("pages") << two << "first page\n\nsecond page";
    QTest::newRow("empty pages") << pdfWithPages({"", page("a"), "", "", page("b"), ""}) << "a\n\nb";
    QTest::newRow("accents") << pdfWithPages({page("Überprüfung im Café")}) << "Überprüfung im Café";
    QTest::newRow("other characters") << mapped() << "日😀\uFFFD";
    QTest::newRow("hyphen") << pdfWithPages({pdfLines({"one para-", "graph"})}) << "one paragraph";
    QTest::newRow("columns") << columns()
                             << "left column line 1\nleft column line 2\nleft column line 3\nleft column line 4\n"
                                "left column line 5\nleft column line 6\n\nright column line 1\nright column line 2\n"
                                "right column line 3\nright column line 4\nright column line 5\nright column line 6";
    QTest::newRow("scanned") << scanned() << "";
    QTest::newRow("locked") << withPageTree("3 0 R", "/Encrypt 6 0 R/ID[<00><00>]") << "";
    QTest::newRow("no pages") << pdfWithPages({}) << "";
    QTest::newRow("one page") << withPageTree("3 0 R") << "a page";
    QTest::newRow("cyclic") << withPageTree("3 0 R 2 0 R") << "a page";
    QTest::newRow("nothing but a circle") << withPageTree("2 0 R 2 0 R") << "";
    QTest::newRow("without its table") << two.left(two.indexOf("xref")) + two.mid(two.indexOf("trailer"))
                                       << "first page\n\nsecond page";
    QTest::newRow("truncated") << two.left(two.indexOf("xref") + 20) << "";
    QTest::newRow("zero bytes") << QByteArray() << "";
    QTest::newRow("zeroes") << QByteArray(100'000, '\0') << "";
    QTest::newRow("text") << QByteArray("These are only words.\n").repeated(1000) << "";
}

void PdfTextReaderTest::readsPages()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, text);
    QCOMPARE(m_reader.text(written("any name", file)), text);
}

void PdfTextReaderTest::keepsTheLimits_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<PdfLimits>("limits");
    QTest::addColumn<QString>("text");

    const PdfLimits ample{.time = longTime, .memoryBytes = qint64(1) << 40, .textBytes = qint64(1) << 40};
    const auto with = [&ample](auto PdfLimits::*limit, auto value) {
        PdfLimits limits = ample;
        limits.*limit = value;
        return limits;
    };
    const QByteArray word = pdfWithPages({page("word")});
    QTest::newRow("time") << slow() << with(&PdfLimits::time, 100ms) << "";
    QTest::newRow("memory") << large() << with(&PdfLimits::memoryBytes, 100'000'000) << "";
    QTest::newRow("enough memory") << large() << ample << "word";
    QTest::newRow("size of the file") << word << with(&PdfLimits::memoryBytes, word.size() - 1) << "";
    QTest::newRow("text") << word << with(&PdfLimits::textBytes, 3) << "";
    QTest::newRow("just enough text") << word << with(&PdfLimits::textBytes, 4) << "word";
}

void PdfTextReaderTest::keepsTheLimits()
{
    QFETCH(QByteArray, file);
    QFETCH(PdfLimits, limits);
    QFETCH(QString, text);
    const PdfTextReader reader{.helper = m_reader.helper, .limits = limits};
    QCOMPARE(reader.text(written("file", file)), text);
}

void PdfTextReaderTest::readsOnlyFiles()
{
    QCOMPARE(m_reader.text(path("missing")), QString());
    QCOMPARE(m_reader.text(m_folder->path()), QString());
    QCOMPARE(::mkfifo(qPrintable(path("pipe")), 0600), 0);
    QCOMPARE(m_reader.text(path("pipe")), QString());
    QVERIFY(QFile::resize(written("huge", pdfWithPages({page("text")})), qint64(2) << 30));
    QCOMPARE(m_reader.text(path("huge")), QString());
}

void PdfTextReaderTest::survivesTheHelper_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<std::chrono::milliseconds>("time");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("warning");
    const auto add = [](const char *name, const QByteArray &commands, std::chrono::milliseconds time,
                        const QString &text,
                        const QString &warning = {}) { QTest::newRow(name) << commands << time << text << warning; };

    const QString none;
    const auto shortTime = 300ms;
    add("text", "printf 'some text'", longTime, "some text");
    add("environment", "cat /proc/$$/environ; pwd", longTime, "/\n");
    add("child", "sleep 1h & printf text", longTime, "text");
    add("stopped", "echo text; kill -STOP $$", shortTime, none);
    add("deaf", "trap '' TERM INT HUP; exec >&-; sleep 1h", shortTime, none);
    add("slow", "while :; do echo text; sleep 0.05; done", shortTime, none);
    add("endless", "exec yes", longTime, none);
    add("not text", "printf 'a\\377b'", longTime, none);
    add("killed", "echo text; kill -KILL $$", longTime, none, "ended by signal 9");
    add("crash", "echo text; kill -SEGV $$", longTime, none, "ended by signal 11");
    add("failure", "echo text; exit 3", longTime, none, "ended with status 3");
}

void PdfTextReaderTest::survivesTheHelper()
{
    QFETCH(QByteArray, commands);
    QFETCH(std::chrono::milliseconds, time);
    QFETCH(QString, text);
    QFETCH(QString, warning);
    const PdfTextReader reader{.helper = script(commands), .limits = {.time = time}};
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, qPrintable(reader.helper + ' ' + warning));
    QCOMPARE(reader.text(written("file", "anything")), text);
}

void PdfTextReaderTest::saysThatNoFileCanBeRead_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<bool>("isShortage");
    QTest::addColumn<QString>("warning");
    QTest::newRow("refused") << QByteArray("exit 2") << false << "ended with status 2";
    QTest::newRow("libraries missing") << QByteArray("exit 127") << false << "ended with status 127";
    QTest::newRow("not installed") << QByteArray() << false << "cannot be started: No such file or directory";
    QTest::newRow("too many open files") << QByteArray("echo text") << true << "cannot be started: Too many open files";
}

void PdfTextReaderTest::saysThatNoFileCanBeRead()
{
    QFETCH(QByteArray, commands);
    QFETCH(bool, isShortage);
    QFETCH(QString, warning);
    const PdfTextReader reader{.helper = commands.isEmpty() ? "/missing/helper" : script(commands), .limits = {}};
    const QString file = written("file", "anything");
    QTest::ignoreMessage(QtWarningMsg, qPrintable(reader.helper + ' ' + warning));
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
    if (isShortage) {
        const int free = ::dup(STDIN_FILENO);
        ::close(free);
        const rlimit oneMore{rlim_t(free) + 1, before.rlim_max}; // for the file that is read
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &oneMore), 0);
    }
    std::optional<HelperError::Cause> cause;
    try {
        reader.text(file);
    } catch (const HelperError &error) {
        cause = error.cause();
    }
    ::setrlimit(RLIMIT_NOFILE, &before);
    QCOMPARE(cause, isShortage ? HelperError::Cause::shortage : HelperError::Cause::installation);
}

void PdfTextReaderTest::endsWhatTheHelperStarted()
{
    const PdfTextReader reader{.helper = script("sleep 1h & echo $!"), .limits = {.time = longTime}};
    const QString number = reader.text(written("file", "anything")).trimmed();
    QVERIFY(number.toInt() > 0);
    QTRY_VERIFY_WITH_TIMEOUT(commandLine(number).isEmpty(), 30000);
}

void PdfTextReaderTest::stopsAtOnce()
{
    const PdfTextReader reader{.helper = script("echo > " + QFile::encodeName(path("started")) + "; kill -STOP $$"),
                               .limits = {.time = longTime}};
    const QString file = written("file", "anything");
    std::stop_source source;
    std::future<QString> text = std::async(std::launch::async, [&] { return reader.text(file, source.get_token()); });
    QTRY_VERIFY(QFile::exists(path("started")));
    source.request_stop();
    QCOMPARE(text.get(), QString());

    QVERIFY(QFile::remove(path("started")));
    QCOMPARE(reader.text(file, source.get_token()), QString());
    QVERIFY(!QFile::exists(path("started")));
}

void PdfTextReaderTest::readsSeveralAtOnce()
{
    std::vector<std::future<QString>> texts;
    for (int i = 0; i < 24; ++i) {
        const QString file = written(QString::number(i), pdfWithPages({page(QString::number(i))}));
        texts.push_back(std::async(std::launch::async, [this, file] { return m_reader.text(file); }));
    }
    for (int i = 0; i < 24; ++i)
        QCOMPARE(texts[size_t(i)].get(), QString::number(i));
}

void PdfTextReaderTest::helperEndsWithItsProgram()
{
    const QStringList lines(60, QStringLiteral("more than a pipe holds, so that the helper waits for its reader"));
    const QString file = written("file", pdfWithPages(QList<QByteArray>(100, pdfLines(lines))));
    QCOMPARE(::mkfifo(qPrintable(path("pipe")), 0600), 0);
    pollfd output{::open(qPrintable(path("pipe")), O_RDONLY | O_NONBLOCK | O_CLOEXEC), POLLIN, 0};
    const auto outputHas = [&output](short event) { return ::poll(&output, 1, 0) == 1 && (output.revents & event); };

    QProcess program;
    program.start("/bin/sh", {"-c", "\"$0\" 1000000000 3600 <\"$1\" >\"$2\"; true", PDF_HELPER, file, path("pipe")});
    QTRY_VERIFY(outputHas(POLLIN));
    QVERIFY(!outputHas(POLLHUP));
    program.kill();
    QTRY_VERIFY(outputHas(POLLHUP));
    QTRY_COMPARE(program.state(), QProcess::NotRunning);
    ::close(output.fd);
}

QTEST_GUILESS_MAIN(PdfTextReaderTest)
#include "tst_pdftextreader.moc"
