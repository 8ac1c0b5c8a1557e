// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/fulldisk.h"
#include "storefixture.h"

#include <QRegularExpression>
#include <QTest>

using namespace lumora;

class AttachmentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesUnderAFreshName_data();
    void copiesUnderAFreshName();
    void keepsOneImagePending();
    void discardsThePendingImageWithTheComposer();
    void handsTheImageToTheMessage();
    void keepsThePendingImageWhenACopyFails_data();
    void keepsThePendingImageWhenACopyFails();

private:
    static QStringList images(const StoreFixture &fixture)
    {
        return QDir(fixture.path("Images")).entryList(QDir::Files);
    }
};

void AttachmentsTest::copiesUnderAFreshName_data()
{
    QTest::addColumn<QString>("picked");
    QTest::addColumn<QString>("extension");
    QTest::newRow("upper case") << "Photo.JPG"
                                << "jpg";
    QTest::newRow("two extensions") << "archive.tar.PNG"
                                    << "png";
    QTest::newRow("none") << "photo"
                          << "";
}

void AttachmentsTest::copiesUnderAFreshName()
{
    QFETCH(QString, picked);
    QFETCH(QString, extension);
    const StoreFixture fixture;
    fixture.write("../" + picked, "pixels");
    const auto store = fixture.start();
    store->attachImage(QUrl::fromLocalFile(fixture.path("../" + picked)));

    const QRegularExpression name("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\." + extension + "$");
    QCOMPARE(images(fixture).size(), 1);
    QVERIFY2(name.match(images(fixture).front()).hasMatch(), qPrintable(images(fixture).front()));
    QCOMPARE(store->pendingImageURL(), fixture.path("Images/" + images(fixture).front()));
    QCOMPARE(fixture.read("Images/" + images(fixture).front()), "pixels");
    QVERIFY(store->canSend());
}

void AttachmentsTest::keepsOneImagePending()
{
    const StoreFixture fixture;
    fixture.write("../a.png", "a");
    fixture.write("../b.png", "b");
    const auto store = fixture.start();
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    store->attachImage(QUrl::fromLocalFile(fixture.path("../b.png")));
    QCOMPARE(images(fixture).size(), 1);
    QCOMPARE(fixture.read("Images/" + images(fixture).front()), "b");

    QVERIFY(QFile::remove(*store->pendingImageURL()));
    store->removePendingImage();
    QVERIFY(!store->pendingImageURL());
    QVERIFY(store->errorMessage().isNull());
    store->removePendingImage();
    QVERIFY(!store->canSend());
}

void AttachmentsTest::discardsThePendingImageWithTheComposer()
{
    const StoreFixture fixture;
    fixture.write("../a.png", "a");
    fixture.write({conversation("a", 2, {userMessage("1")}), conversation("b", 1, {userMessage("2")})});
    const auto store = fixture.start();

    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    store->selectConversation(store->conversations()[1].id);
    QVERIFY(images(fixture).isEmpty());
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    store->newConversation();
    QVERIFY(images(fixture).isEmpty());
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    store->deleteConversation(*store->selectedID());
    QCOMPARE(images(fixture).size(), 1);
    QVERIFY(store->pendingImageURL());
}

void AttachmentsTest::handsTheImageToTheMessage()
{
    const StoreFixture fixture;
    fixture.write("../a.png", "a");
    const auto store = fixture.start();
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    store->send();
    QVERIFY(!store->pendingImageURL());
    const ChatMessage message = store->conversations().front().messages.front();
    QCOMPARE(message.text, "Describe this image.");
    QCOMPARE(store->windowTitle(), "Describe this image.");
    QCOMPARE(message.imageFilename, images(fixture).front());
    QCOMPARE(store->imageURL(*message.imageFilename), fixture.path("Images/" + images(fixture).front()));
    QTRY_VERIFY(!store->isGenerating());

    store->setDraft("And what does the text say?");
    store->send();
    QTRY_VERIFY(!store->isGenerating());
    const QList<ReplyRequest> &requests = fixture.model->requests();
    QCOMPARE(requests.size(), 2);
    for (const ReplyRequest &request : requests) {
        QCOMPARE(request.prompt.attachments,
                 QList{Attachment(*store->imageURL(*message.imageFilename)).label("attached image")});
    }

    store->deleteConversation(*store->selectedID());
    QCOMPARE(images(fixture).size(), 1);
}

void AttachmentsTest::keepsThePendingImageWhenACopyFails_data()
{
    QTest::addColumn<QString>("picked");
    QTest::addColumn<QString>("why");
    QTest::newRow("vanished") << "gone.png"
                              << "The file cannot be copied: No such file or directory.";
    QTest::newRow("folder") << "Lumora"
                            << "The file cannot be copied: it is not a file.";
    QTest::newRow("2 GB") << "huge.png"
                          << "The file has more than 256 MB. Choose a smaller image.";
    QTest::newRow("full disk") << "large.png"
                               << "The file cannot be copied: File too large.";
}

void AttachmentsTest::keepsThePendingImageWhenACopyFails()
{
    QFETCH(QString, picked);
    QFETCH(QString, why);
    const StoreFixture fixture;
    fixture.write("../a.png", "a");
    fixture.write("../large.png", QByteArray(200'000, 'a'));
    fixture.write("../huge.png", "a");
    QVERIFY(QFile::resize(fixture.path("../huge.png"), qint64(2) << 30));
    const auto store = fixture.start();
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    const auto pending = store->pendingImageURL();
    {
        const FullDisk disk(100'000); // which holds no copy of the huge file either
        store->attachImage(QUrl::fromLocalFile(fixture.path("../" + picked)));
    }
    QCOMPARE(store->errorMessage(), "Could not attach image: " + why);
    QCOMPARE(store->pendingImageURL(), pending);
    QCOMPARE(images(fixture).size(), 1);
    store->attachImage(QUrl::fromLocalFile(fixture.path("../a.png")));
    QVERIFY(store->errorMessage().isNull());
}

QTEST_GUILESS_MAIN(AttachmentsTest)
#include "tst_attachments.moc"
