// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/errors.h"
#include "platform/model/tool.h"
#include "platform/vision/barcodereadertool.h"
#include "platform/vision/ocrtool.h"
#include "platform/vision/pictures.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QtConcurrentRun>

#include <sys/stat.h>

using namespace lumora;

class ImageToolsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void needNoArguments();
    void tellWhatTheyFind();
    void readSeveralAtOnce();
    void tellThatTheyFindNothing();
    void tellThatThereIsNoImage_data();
    void tellThatThereIsNoImage();
    void endInTime();
    void failWhereTheUserCanHelp();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    const QTemporaryDir m_folder;
    const ImageReader m_reader{QStringLiteral(IMAGE_READER)};
};

static QString answer(const std::shared_ptr<const Tool> &tool)
{
    return tool->call(GeneratedContent::fromJson(R"({"image":"attached"})")); // a model may say more than it has to
}

void ImageToolsTest::needNoArguments()
{
    const QByteArray schema =
        R"({"title":"Arguments","type":"object","properties":{},"required":[],"additionalProperties":false})";
    QCOMPARE(makeTool(OCRTool())->parameters().toJson(), schema);
    QCOMPARE(makeTool(BarcodeReaderTool())->parameters().toJson(), schema);
    QVERIFY(OCRTool().name != BarcodeReaderTool().name);
}

void ImageToolsTest::tellWhatTheyFind()
{
    QImage picture = test::written({.lines = {"Room 14 is in the cellar"}});
    QPainter(&picture).drawImage(0, 0, test::barcode("QRCode", "14", 0, 0));
    QVERIFY(picture.save(path("picture.png")));
    QCOMPARE(answer(makeTool(BarcodeReaderTool{.imagePath = path("picture.png"), .reader = m_reader})),
             QStringLiteral("QR Code: 14"));
    const QString text = answer(makeTool(OCRTool{.imagePath = path("picture.png"), .reader = m_reader}));
    QVERIFY2(text.contains(QLatin1String("Room 14 is in the cellar")), qPrintable(text));
}

void ImageToolsTest::readSeveralAtOnce()
{
    QFile file(path("turned.jpg"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(test::jpegOfCamera(test::written({.lines = {"Room 14 is in the cellar"}}), 6));
    file.close();
    const auto tool = makeTool(OCRTool{.imagePath = file.fileName(), .reader = m_reader});
    const QList<QFuture<QString>> calls{QtConcurrent::run(answer, tool), QtConcurrent::run(answer, tool)};
    for (const QFuture<QString> &call : calls)
        QCOMPARE(call.result(), QStringLiteral("Room 14 is in the cellar"));
}

void ImageToolsTest::tellThatTheyFindNothing()
{
    QImage blank(200, 100, QImage::Format_RGB32);
    blank.fill(Qt::white);
    QVERIFY(blank.save(path("blank.png")));
    QCOMPARE(answer(makeTool(OCRTool{.imagePath = path("blank.png"), .reader = m_reader})),
             QStringLiteral("No text was found in the attached image."));
    QCOMPARE(answer(makeTool(BarcodeReaderTool{.imagePath = path("blank.png"), .reader = m_reader})),
             QStringLiteral("No barcode was found in the attached image."));
}

void ImageToolsTest::tellThatThereIsNoImage_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("helper");
    const auto add = [this](const char *name, const QString &helper = QStringLiteral(IMAGE_READER)) {
        QTest::newRow(name) << path(name) << helper;
    };
    add("missing");
    add(".");
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    add("pipe");
    QFile text(path("text"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("This is only text.\n") > 0);
    add("text");
    QTest::newRow("a helper that fails") << path("text") << "/bin/false";
    QTest::newRow("a helper that says nothing") << path("text") << "/bin/true";
}

void ImageToolsTest::tellThatThereIsNoImage()
{
    QFETCH(QString, file);
    QFETCH(QString, helper);
    const QString expected =
        QStringLiteral("The attached image could not be read: it is missing, damaged, too large, or not an image.");
    QCOMPARE(answer(makeTool(OCRTool{.imagePath = file, .reader = {helper}})), expected);
    QCOMPARE(answer(makeTool(BarcodeReaderTool{.imagePath = file, .reader = {helper}})), expected);
}

/// Full of the corners of QR codes, each three of which could make one: the search takes hours.
static QImage corners()
{
    QImage image(2000, 2000, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int y = 0; y < image.height(); y += 20) {
        for (int x = 0; x < image.width(); x += 20) {
            painter.fillRect(x, y, 14, 14, Qt::black);
            painter.fillRect(x + 2, y + 2, 10, 10, Qt::white);
            painter.fillRect(x + 4, y + 4, 6, 6, Qt::black);
        }
    }
    return image;
}

void ImageToolsTest::endInTime()
{
    QVERIFY(corners().save(path("corners.png")));
    const ImageReader reader{m_reader.helper, std::chrono::seconds(2)};
    QCOMPARE(answer(makeTool(BarcodeReaderTool{.imagePath = path("corners.png"), .reader = reader})),
             QStringLiteral("The attached image could not be read in time."));

    std::stop_source stop;
    stop.request_stop();
    QCOMPARE(m_reader.read(path("corners.png"), ImageReader::Wanted::barcodes, stop.get_token()).outcome,
             Reading::Outcome::late);
}

void ImageToolsTest::failWhereTheUserCanHelp()
{
    const QString file = path("written.png");
    QVERIFY(test::written({.lines = {"Room 14"}}).save(file));
    QVERIFY_THROWS_EXCEPTION(ModelError, answer(makeTool(OCRTool{.imagePath = file, .reader = {path("missing")}})));

    qputenv("TESSDATA_PREFIX", QFile::encodeName(m_folder.path())); // where no languages are
    QVERIFY_THROWS_EXCEPTION(ModelError, answer(makeTool(OCRTool{.imagePath = file, .reader = m_reader})));
    qunsetenv("TESSDATA_PREFIX");
}

QTEST_MAIN(ImageToolsTest)
#include "tst_imagetools.moc"
