// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/childprocesses.h"
#include "platform/model/errors.h"
#include "platform/model/tool.h"
#include "platform/vision/imagetools.h"
#include "platform/vision/pictures.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

#include <future>
#include <sys/stat.h>

using namespace lumora;

class ImageToolsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void needNoArguments();
    void answer_data();
    void answer();
    void readSeveralAtOnce();
    void endInTime_data();
    void endInTime();
    void failWhereTheUserCanHelp();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    const QTemporaryDir m_folder;
    const ImageReader m_reader{QStringLiteral(IMAGE_READER)};
};

using MakeImageTool = ImageTool (*)(const QString &, const ImageReader &);

static QString answerOf(const ImageTool &tool, const std::stop_token &stop = {})
{
    const auto arguments = GeneratedContent::fromJson(R"({"image":"attached"})"); // a model may say more than it has to
    return makeTool(tool)->call(arguments, stop);
}

void ImageToolsTest::initTestCase()
{
    QImage picture = test::written({.lines = {"Room 14 is in the cellar"}});
    QPainter(&picture).drawImage(0, 0, test::barcode("QRCode", "14", 0, 0));
    QVERIFY(picture.save(path("picture.png")));
    QFile turned(path("turned.jpg"));
    QVERIFY(turned.open(QIODevice::WriteOnly));
    turned.write(test::jpegOfCamera(test::written({.lines = {"Room 14 is in the cellar"}}), 6));
    QImage blank(200, 100, QImage::Format_RGB32);
    blank.fill(Qt::white);
    QVERIFY(blank.save(path("blank.png")));
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QFile text(path("text"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("This is only text.\n") > 0);
}

void ImageToolsTest::needNoArguments()
{
    const QByteArray schema =
        R"({"title":"Arguments","type":"object","properties":{},"required":[],"additionalProperties":false})";
    for (const MakeImageTool make : {&ocrTool, &barcodeReaderTool})
        QCOMPARE(makeTool(make({}, {}))->parameters().toJson(), schema);
    QVERIFY(ocrTool({}, {}).name != barcodeReaderTool({}, {}).name);
}

void ImageToolsTest::answer_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("helper");
    QTest::addColumn<QString>("written"); // a part of it
    QTest::addColumn<QString>("coded");
    const auto add = [this](const char *file, const QString &written, const QString &coded) {
        QTest::newRow(file) << path(file) << m_reader.helper << written << coded;
    };
    const QString noText = "No text was found in the attached image.";
    const QString noBarcode = "No barcode was found in the attached image.";
    add("picture.png", "Room 14 is in the cellar", "QR Code: 14");
    add("turned.jpg", "Room 14 is in the cellar", noBarcode);
    add("blank.png", noText, noBarcode);
    const QString noImage = "The attached image could not be read: it is missing, damaged, too large, or not an image.";
    for (const char *file : {"missing", ".", "pipe", "text"})
        add(file, noImage, noImage);
    QTest::newRow("a helper that fails") << path("text") << "/bin/false" << noImage << noImage;
    QTest::newRow("a helper that says nothing") << path("text") << "/bin/true" << noImage << noImage;
}

void ImageToolsTest::answer()
{
    QFETCH(QString, file);
    QFETCH(QString, helper);
    QFETCH(QString, written);
    QFETCH(QString, coded);
    const QString text = answerOf(ocrTool(file, {helper}));
    QVERIFY2(text.contains(written), qPrintable(text));
    QCOMPARE(answerOf(barcodeReaderTool(file, {helper})), coded);
}

void ImageToolsTest::readSeveralAtOnce()
{
    const auto call = [this] { return answerOf(ocrTool(path("turned.jpg"), m_reader)); };
    std::future<QString> first = std::async(std::launch::async, call);
    QCOMPARE(call(), QStringLiteral("Room 14 is in the cellar"));
    QCOMPARE(first.get(), QStringLiteral("Room 14 is in the cellar"));
}

void ImageToolsTest::endInTime_data()
{
    QTest::addColumn<std::chrono::milliseconds>("time");
    QTest::addColumn<bool>("isStopped");
    QTest::newRow("its time is up") << std::chrono::milliseconds(500) << false;
    QTest::newRow("stopped") << std::chrono::milliseconds(std::chrono::hours(1)) << true;
}

void ImageToolsTest::endInTime()
{
    QFETCH(std::chrono::milliseconds, time);
    QFETCH(bool, isStopped);
    QVERIFY(test::endlessCodes().save(path("corners.png")));
    const ImageTool tool = barcodeReaderTool(path("corners.png"), {m_reader.helper, time});
    std::stop_source stop;
    std::future<QString> text = std::async(std::launch::async, [&] { return answerOf(tool, stop.get_token()); });
    QTRY_VERIFY(!childProcesses().isEmpty() || !isStopped);
    if (isStopped)
        stop.request_stop();
    QCOMPARE(text.get(), QStringLiteral("The attached image could not be read in time."));
    QVERIFY(childProcesses().isEmpty());
}

void ImageToolsTest::failWhereTheUserCanHelp()
{
    QVERIFY_THROWS_EXCEPTION(ModelError, answerOf(ocrTool(path("picture.png"), {path("missing")})));

    qputenv("TESSDATA_PREFIX", QFile::encodeName(m_folder.path())); // where no languages are
    QVERIFY_THROWS_EXCEPTION(ModelError, answerOf(ocrTool(path("picture.png"), m_reader)));
    qunsetenv("TESSDATA_PREFIX");
}

QTEST_MAIN(ImageToolsTest)
#include "tst_imagetools.moc"
