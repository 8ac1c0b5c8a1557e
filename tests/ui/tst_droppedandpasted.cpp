// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/windowtest.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>

using namespace lumora;

class DroppedAndPastedTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void pastes_data()
    {
        QTest::addColumn<bool>("hasText");
        QTest::addColumn<bool>("hasPicture");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("draft");
        QTest::addColumn<QString>("attached"); // the extension

        QTest::newRow("text") << true << false << QStringList() << "words"
                              << "";
        QTest::newRow("picture") << false << true << QStringList() << ""
                                 << "png";
        QTest::newRow("text with a picture of it") << true << true << QStringList() << "words"
                                                   << "";
        QTest::newRow("image file") << true << false << QStringList{"notes.txt", "Photo.PNG"} << ""
                                    << "png";
        QTest::newRow("file that is no image") << true << false << QStringList{"notes.txt"} << "words"
                                               << "";
    }

    void pastes()
    {
        QFETCH(bool, hasText);
        QFETCH(bool, hasPicture);
        QFETCH(QStringList, files);
        QFETCH(QString, draft);
        QFETCH(QString, attached);
        start();
        auto *copied = new QMimeData;
        if (hasText)
            copied->setText("words");
        if (hasPicture)
            copied->setImageData(m_picture);
        if (!files.isEmpty())
            copied->setUrls(urls(files));
        QGuiApplication::clipboard()->setMimeData(copied);

        m_driver->press(Qt::Key_V, Qt::ControlModifier);

        QCOMPARE(m_store->draft(), draft);
        QCOMPARE(QFileInfo(m_store->pendingImageURL().value_or(QString())).suffix(), attached);
        if (hasPicture && !hasText)
            QCOMPARE(QImage(*m_store->pendingImageURL()).convertToFormat(m_picture.format()), m_picture);
        QCOMPARE(m_store->errorMessage(), QString());
    }

    void dropsOnTheComposer_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("isTaken");

        QTest::newRow("image") << QStringList{"Photo.PNG"} << true;
        QTest::newRow("image among others") << QStringList{"notes.txt", "Photo.PNG"} << true;
        QTest::newRow("document") << QStringList{"notes.txt"} << false;
        QTest::newRow("not there") << QStringList{"gone.png"} << false;
    }

    void dropsOnTheComposer()
    {
        QFETCH(QStringList, files);
        QFETCH(bool, isTaken);
        start();

        QCOMPARE(drop(files, m_driver->find(QAccessible::EditableText, "Message")), isTaken);

        QCOMPARE(m_store->pendingImageURL().has_value(), isTaken);
        QCOMPARE(m_driver->shows(QAccessible::Button, "Remove image"), isTaken);
    }

    void dropsOnTheDocuments()
    {
        start();
        QSignalSpy changed(m_store->library(), &DocumentLibrary::documentsChanged);
        const QQuickItem *panel = m_driver->find(QAccessible::Button, "Add Document");

        QVERIFY(!drop({"Photo.PNG"}, panel));
        QVERIFY(drop({"notes.txt", "Photo.PNG", "more.MD"}, panel));

        QTRY_COMPARE(changed.size(), 2);
        QVERIFY(m_driver->shows(QAccessible::Button, "Remove notes.txt"));
        QVERIFY(m_driver->shows(QAccessible::Button, "Remove more.MD"));
    }

    void whatCannotBeTakenElsewhereIsLeftAlone()
    {
        start({conversation("Chat", 1, {userMessage("a")})});
        QVERIFY(!drop({"Photo.PNG"}, messageList()));
        QVERIFY(!m_store->pendingImageURL());
    }

private:
    QList<QUrl> urls(const QStringList &names)
    {
        if (!m_picture.save(m_fixture->path("Photo.PNG")))
            qFatal("cannot write the picture");
        for (const char *name : {"notes.txt", "more.MD"})
            m_fixture->write(name, "Some words");
        QList<QUrl> urls;
        for (const QString &name : names)
            urls << QUrl::fromLocalFile(m_fixture->path(name));
        return urls;
    }

    /// Whether the files are taken where they are let go.
    bool drop(const QStringList &names, const QQuickItem *target)
    {
        QMimeData dragged;
        dragged.setUrls(urls(names));
        const QPointF middle = target->mapToScene({target->width() / 2, target->height() / 2});
        QDragEnterEvent entering(middle.toPoint(), Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_driver->window(), &entering);
        QDragMoveEvent moving(middle.toPoint(), Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_driver->window(), &moving);
        QDropEvent letGo(middle, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        letGo.setAccepted(false);
        QCoreApplication::sendEvent(m_driver->window(), &letGo);
        return letGo.isAccepted();
    }

    QImage m_picture = [] {
        QImage picture(30, 20, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        return picture;
    }();
};

int main(int argc, char *argv[])
{
    return runWindowTest<DroppedAndPastedTest>(argc, argv);
}

#include "tst_droppedandpasted.moc"
