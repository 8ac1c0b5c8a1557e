// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person does with documents and images, from the pickers to the reply.

#include "platform/model/scripted/cannedconversation.h"
#include "platform/pdf/pdfwriter.h"
#include "store/storefixture.h"
#include "ui/windowdriver.h"

#include <QGuiApplication>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <ZXing/BarcodeFormat.h>
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

using namespace lumora;

class DocumentsAndImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void importsAsksAndRemoves();
    void tellsWhatCannotBeImported();
    void readsAPage();
    void readsACode();
    void takesAnImageBack();
    void cancelledPickersChangeNothing();

private:
    QString file(const QString &name, const QByteArray &content) const;
    QString picture(const QString &name, const QImage &image) const;
    void pick(const QString &button, const QString &path) const;
    void ask(const QString &question) const;
    const ChatMessage &reply() const { return m_store->selectedConversation()->messages.back(); }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<WindowDriver> m_driver;
};

void DocumentsAndImagesTest::init()
{
    m_fixture = std::make_unique<StoreFixture>();
    m_fixture->model = std::make_shared<ScriptedModelService>(
        [](const ReplyRequest &request) { return cannedReply(request, std::chrono::milliseconds(1)); });
    m_store = std::make_unique<ChatStore>(SystemLanguageModel(m_fixture->model), m_fixture->data.path(),
                                          PdfTextReader{.helper = QStringLiteral(PDF_HELPER)},
                                          ImageReader{.helper = QStringLiteral(IMAGE_READER)});
    m_driver = std::make_unique<WindowDriver>(m_store.get());
}

void DocumentsAndImagesTest::cleanup()
{
    m_driver.reset();
    m_store.reset();
    m_fixture.reset();
}

QString DocumentsAndImagesTest::file(const QString &name, const QByteArray &content) const
{
    m_fixture->write(QStringLiteral("../") + name, content);
    return m_fixture->data.filePath(name);
}

QString DocumentsAndImagesTest::picture(const QString &name, const QImage &image) const
{
    const QString path = m_fixture->data.filePath(name);
    if (!image.save(path))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

/// Chooses a file in the picker that this button opens, or cancels it without one. The dialog itself is the desktop's,
/// or Qt's; what it tells the program is said in its place.
void DocumentsAndImagesTest::pick(const QString &button, const QString &path) const
{
    m_driver->click(m_driver->find(QAccessible::Button, button));
    QObject *picker = nullptr;
    for (QObject *child : m_driver->window()->findChildren<QObject *>()) {
        if (child->inherits("QQuickFileDialog") && child->property("visible").toBool())
            picker = child;
    }
    QVERIFY(picker);
    QVERIFY(QMetaObject::invokeMethod(picker, "reject"));
    QVERIFY(!picker->property("visible").toBool());
    if (!path.isEmpty())
        QVERIFY(QMetaObject::invokeMethod(picker, "picked", Q_ARG(QUrl, QUrl::fromLocalFile(path))));
}

void DocumentsAndImagesTest::ask(const QString &question) const
{
    m_store->setDraft(question);
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Send")));
    QTRY_VERIFY_WITH_TIMEOUT(!m_store->isGenerating(), 60000);
    QVERIFY2(m_store->errorMessage().isNull(), qPrintable(m_store->errorMessage()));
}

void DocumentsAndImagesTest::importsAsksAndRemoves()
{
    QVERIFY(m_driver->showsText(QStringLiteral("Add a document to ask questions about it.")));
    pick(QStringLiteral("Add Document"), file(QStringLiteral("house.md"), "# The house\n\nDogs are **not** allowed."));
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("house.md")));
    pick(QStringLiteral("Add Document"),
         file(QStringLiteral("Lease.pdf"),
              pdfWithPages({pdfLines({QStringLiteral("The rent is 900 euros a month.")})})));
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("Lease.pdf")));
    QVERIFY(!m_driver->showsText(QStringLiteral("Add a document to ask questions about it.")));

    ask(QStringLiteral("What does the document say about the rent?"));
    QVERIFY2(reply().text.contains(QStringLiteral("Document: Lease.pdf\nExcerpt: The rent is 900 euros a month.")),
             qPrintable(reply().text));
    QVERIFY(m_driver->showsText(QStringLiteral("searchDocuments · Complete")));

    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Remove Lease.pdf")));
    QTRY_VERIFY(!m_driver->showsText(QStringLiteral("Lease.pdf")));
    ask(QStringLiteral("What does the document say about the rent?"));
    QVERIFY2(!reply().text.contains(QStringLiteral("900")), qPrintable(reply().text));

    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Remove house.md")));
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("Add a document to ask questions about it.")));
    ask(QStringLiteral("What does the document say?"));
    QVERIFY(m_fixture->model->requests().last().tools.isEmpty());
}

void DocumentsAndImagesTest::tellsWhatCannotBeImported()
{
    const QString noText = QStringLiteral("No readable text was found in this document. Scanned PDFs need OCR first.");
    pick(QStringLiteral("Add Document"), file(QStringLiteral("scan.pdf"), pdfWithPages({QByteArray()})));
    QTRY_VERIFY(m_driver->showsText(noText));
    QVERIFY(!m_driver->showsText(QStringLiteral("scan.pdf")));
    pick(QStringLiteral("Add Document"), file(QStringLiteral("notes.txt"), "pets"));
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("notes.txt")));
    QVERIFY(!m_driver->showsText(noText));
}

void DocumentsAndImagesTest::readsAPage()
{
    QImage page(900, 300, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(40);
    painter.setFont(font);
    painter.drawText(page.rect(), Qt::AlignCenter, QStringLiteral("The total is 42 euros.\nPlease pay by Friday."));
    painter.end();

    pick(QStringLiteral("Attach Image"), picture(QStringLiteral("page.png"), page));
    QTRY_VERIFY(m_driver->shows(QAccessible::Button, QStringLiteral("Remove image")));
    ask(QStringLiteral("Read this page"));
    QVERIFY(!m_driver->shows(QAccessible::Button, QStringLiteral("Remove image")));
    QVERIFY2(reply().text.contains(QStringLiteral("The total is 42 euros.")), qPrintable(reply().text));
    QVERIFY(m_driver->showsText(QStringLiteral("readText · Complete")));
    QTRY_VERIFY(m_driver->shows(QAccessible::Graphic, QStringLiteral("Attached image")));
}

void DocumentsAndImagesTest::readsACode()
{
    const auto bits =
        ZXing::MultiFormatWriter(ZXing::BarcodeFormat::QRCode).encode(L"https://example.org/menu", 300, 300);
    QImage code(bits.width(), bits.height(), QImage::Format_RGB32);
    for (int y = 0; y < bits.height(); ++y)
        for (int x = 0; x < bits.width(); ++x)
            code.setPixelColor(x, y, bits.get(x, y) ? Qt::black : Qt::white);

    pick(QStringLiteral("Attach Image"), picture(QStringLiteral("code.png"), code));
    ask(QStringLiteral("What does the QR code say?"));
    QVERIFY2(reply().text.contains(QStringLiteral("https://example.org/menu")), qPrintable(reply().text));
    QVERIFY(m_driver->showsText(QStringLiteral("readBarcodes · Complete")));
}

void DocumentsAndImagesTest::takesAnImageBack()
{
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    pick(QStringLiteral("Attach Image"), picture(QStringLiteral("a.png"), image));
    const QString copy = m_store->pendingImageURL().value();
    QVERIFY(QFile::exists(copy));
    QVERIFY(m_driver->showsText(QFileInfo(copy).fileName()));
    QVERIFY(m_driver->find(QAccessible::Button, QStringLiteral("Send"))->isEnabled());

    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Remove image")));
    QVERIFY(!m_driver->shows(QAccessible::Button, QStringLiteral("Remove image")));
    QVERIFY(!m_driver->find(QAccessible::Button, QStringLiteral("Send"))->isEnabled());
    QVERIFY(!QFile::exists(copy));
}

void DocumentsAndImagesTest::cancelledPickersChangeNothing()
{
    pick(QStringLiteral("Attach Image"), {});
    pick(QStringLiteral("Add Document"), {});
    QVERIFY(!m_store->pendingImageURL());
    QVERIFY(!m_store->library()->isImporting());
    QVERIFY(m_store->errorMessage().isNull() && m_store->library()->errorMessage().isNull());
}

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    DocumentsAndImagesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_documentsandimages.moc"
