// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"
#include "generation/sessionsetup.h"
#include "generation/toolselection.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

using ImageTool = ToolSelection::ImageTool;

class SessionSetupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectsToolsByKeyword_data();
    void selectsToolsByKeyword();
    void offersTheChosenTools_data();
    void offersTheChosenTools();
    void describesTheDateTool();
    void keepsTheInstructionsFixed();
};

void SessionSetupTest::selectsToolsByKeyword_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("hasImage");
    QTest::addColumn<QStringList>("documents");
    QTest::addColumn<ToolSelection>("selection");
    const QStringList none;
    const QStringList budget{"Plan.txt", "Budget.md"};

    QTest::newRow("nothing typed") << "" << true << budget << ToolSelection{};
    QTest::newRow("current time") << "What is the current time?" << false << none
                                  << ToolSelection{true, ImageTool::none, false};
    QTest::newRow("what time") << "WHAT TIME is it" << false << none << ToolSelection{true, ImageTool::none, false};
    QTest::newRow("no date keyword") << "What's the time?" << false << none << ToolSelection{};
    QTest::newRow("barcode") << "Read the barcode" << true << none
                             << ToolSelection{false, ImageTool::barcodeReader, false};
    QTest::newRow("QR code") << "Which QR-Code is this?" << true << none
                             << ToolSelection{false, ImageTool::barcodeReader, false};
    QTest::newRow("page") << "Read this page" << true << none
                          << ToolSelection{false, ImageTool::textRecognition, false};
    QTest::newRow("page without an image") << "Read this page" << false << none << ToolSelection{};
    QTest::newRow("no image keyword") << "What is this?" << true << none << ToolSelection{};
    QTest::newRow("inside longer words") << "I already lost my password profile" << true << budget
                                         << ToolSelection{false, ImageTool::textRecognition, true};
    QTest::newRow("document without documents")
        << "Search my documents, files and notes" << false << none << ToolSelection{};
    QTest::newRow("document") << "What does the PDF say?" << false << budget
                              << ToolSelection{false, ImageTool::none, true};
    QTest::newRow("name of the second") << "Sum up budget.MD" << false << budget
                                        << ToolSelection{false, ImageTool::none, true};
    QTest::newRow("name with its accents apart")
        << "Sum up r\u00E9sum\u00E9" << false << QStringList{"R\u0065\u0301sum\u0065\u0301"}
        << ToolSelection{false, ImageTool::none, true};
    QTest::newRow("typed with accents apart") << "Sum up re\u0301sume\u0301" << false << QStringList{"R\u00E9sum\u00E9"}
                                              << ToolSelection{false, ImageTool::none, true};
    QTest::newRow("all") << "Read today's notes" << true << budget
                         << ToolSelection{true, ImageTool::textRecognition, true};
}

void SessionSetupTest::selectsToolsByKeyword()
{
    QFETCH(QString, text);
    QFETCH(bool, hasImage);
    QFETCH(QStringList, documents);
    QFETCH(ToolSelection, selection);
    QCOMPARE(selectToolsByKeyword(text, hasImage ? RequestImage::attached : RequestImage::absent, documents),
             selection);
}

void SessionSetupTest::offersTheChosenTools_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << "Hello" << QStringList();
    QTest::newRow("all of a kind") << "Read today's notes"
                                   << QStringList({"currentDate", "readText", "searchDocuments"});
    QTest::newRow("barcode") << "What says the qr code in the file?"
                             << QStringList({"readBarcodes", "searchDocuments"});
    QTest::newRow("by a document's name") << "Who wrote A.TXT?" << QStringList({"searchDocuments"});
}

void SessionSetupTest::offersTheChosenTools()
{
    QFETCH(QString, text);
    QFETCH(QStringList, names);
    const QTemporaryDir data;
    QFile picked(data.filePath("a.txt"));
    QVERIFY(picked.open(QIODevice::WriteOnly) && picked.write("pets") == 4);
    picked.close();
    DocumentLibrary library(data.path());
    library.add(QUrl::fromLocalFile(picked.fileName()));
    QTRY_COMPARE(library.documents().size(), 1);

    QStringList offered;
    for (const auto &tool : selectTools(text, "/tmp/a.png", library, {}))
        offered.append(tool->name());
    QCOMPARE(offered, names);
}

void SessionSetupTest::describesTheDateTool()
{
    const ToolList tools = selectTools("What is on today?", std::nullopt, DocumentLibrary(std::nullopt), {});
    QCOMPARE(tools.size(), 1);
    QCOMPARE(tools.front()->name(), "currentDate");
    QCOMPARE(tools.front()->description(),
             "Get the current local date and time. Use this when the user asks about today, now, or the current time.");
    QCOMPARE(tools.front()->parameters().properties.front().description,
             "The user's question about the current date or time");
}

void SessionSetupTest::keepsTheInstructionsFixed()
{
    // Each word counts: the built-in model is trained on this very text.
    QCOMPARE(
        sessionInstructions(),
        "You are a helpful desktop assistant. Answer the latest user message directly. "
        "If an OCR or barcode tool is available, call it before answering about text or codes in the attached image. "
        "If a document search tool is available, call it before answering from documents and cite the document title. "
        "Use the date tool for current date or time. You have no internet access. "
        "Keep answers clear and concise.");
}

QTEST_GUILESS_MAIN(SessionSetupTest)
#include "tst_sessionsetup.moc"
