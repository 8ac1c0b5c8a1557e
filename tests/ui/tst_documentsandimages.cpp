// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person does with documents and images, from the pickers to the reply.

#include "documents/listfile.h"
#include "platform/model/childprocesses.h"
#include "platform/model/replyworkers.h"
#include "platform/model/scripted/cannedconversation.h"
#include "platform/pdf/pdfwriter.h"
#include "platform/vision/pictures.h"
#include "store/storefixture.h"
#include "ui/windowdriver.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

using namespace lumora;

class DocumentsAndImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void importsAsksAndRemoves();
    void readsAPage();
    void readsACode();
    void takesAnImageBack();
    void cancelledPickersChangeNothing();
    void endsAToolThatRuns_data();
    void endsAToolThatRuns();
    void keepsManyDocumentsInReach();

private:
    void open();
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
    open();
}

void DocumentsAndImagesTest::open()
{
    m_driver.reset();
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

    const QString noText = QStringLiteral("No readable text was found in this document. Scanned PDFs need OCR first.");
    pick(QStringLiteral("Add Document"), file(QStringLiteral("scan.pdf"), pdfWithPages({QByteArray()})));
    QTRY_VERIFY(m_driver->showsText(noText));
    QVERIFY(!m_driver->showsText(QStringLiteral("scan.pdf")));

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

void DocumentsAndImagesTest::readsAPage()
{
    const QImage page = test::written({.lines = {"The total is 42 euros.", "Please pay by Friday."}});
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
    const QImage code = test::barcode("QRCode", "https://example.org/menu", 300, 300);
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

void DocumentsAndImagesTest::endsAToolThatRuns_data()
{
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("Stop") << false;
    QTest::newRow("the window closes") << true;
}

void DocumentsAndImagesTest::endsAToolThatRuns()
{
    QFETCH(bool, isClosed);
    pick(QStringLiteral("Attach Image"), picture(QStringLiteral("codes.png"), test::endlessCodes()));
    m_store->setDraft(QStringLiteral("What does the QR code say?"));
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Send")));
    QTRY_VERIFY(!childProcesses().isEmpty());
    if (isClosed) {
        m_driver.reset();
        m_store.reset();
    } else {
        m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Stop")));
        QVERIFY(!m_store->isGenerating());
    }
    QVERIFY(replyWorkers()->waitForDone(10000));
    QVERIFY(childProcesses().isEmpty());
}

void DocumentsAndImagesTest::keepsManyDocumentsInReach()
{
    QList<ImportedDocument> documents;
    for (int i = 1; i <= 40; ++i)
        documents.append({.name = QStringLiteral("%1.txt").arg(i), .filename = QStringLiteral("%1.txt").arg(i)});
    m_fixture->write(QStringLiteral("Documents/documents.json"), encodeDocuments(documents));
    open();
    const QRectF window(QPointF(), m_driver->window()->size());
    const auto isInWindow = [&window](const QQuickItem *item) {
        return item && window.contains(item->mapRectToScene(item->boundingRect()));
    };
    QVERIFY(isInWindow(m_driver->find(QAccessible::StatusBar, QStringLiteral("On-device model ready"))));

    const QString last = QStringLiteral("Remove 40.txt");
    m_driver->find(QAccessible::Button, QStringLiteral("Add Document"))->forceActiveFocus(Qt::TabFocusReason);
    m_driver->press(Qt::Key_Tab);
    for (int i = 0; i < 40 && m_driver->focusName() != last; ++i)
        m_driver->press(Qt::Key_Down);
    QCOMPARE(m_driver->focusName(), last);
    const QQuickItem *list = m_driver->find(QAccessible::List, QStringLiteral("Documents"));
    const QQuickItem *button = m_driver->find(QAccessible::Button, last);
    QTRY_VERIFY(list->contains(button->mapToItem(list, {0, button->height() - 1})));
    m_driver->click(m_driver->find(QAccessible::Button, last));
    QCOMPARE(m_store->library()->documents().size(), 39);
    QCOMPARE(m_store->library()->documents().last().name, QStringLiteral("39.txt"));
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
