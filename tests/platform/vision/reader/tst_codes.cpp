// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/pictures.h"
#include "platform/vision/reader/contents.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class CodesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEachFormat_data();
    void readsEachFormat();
    void findsCodes_data();
    void findsCodes();
    void writesAnyContent_data();
    void writesAnyContent();
    void saysThatThereIsNothing_data();
    void saysThatThereIsNothing();

private:
    Reading read(const QImage &image) const;

    const QTemporaryDir m_folder;
};

Reading CodesTest::read(const QImage &image) const
{
    QFile file(m_folder.filePath(QStringLiteral("picture.png")));
    if (!image.save(file.fileName()) || !file.open(QIODevice::ReadOnly))
        return {.content = QStringLiteral("(not saved)")};
    return readCodes(file.handle());
}

void CodesTest::readsEachFormat_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *format, const char *content, const char *type) {
        QTest::newRow(format) << QByteArray(format) << QByteArray(content)
                              << QLatin1String(type) + QLatin1String(": ") + QLatin1String(content);
    };
    add("QRCode", "https://example.org/menu?table=4", "QR Code");
    add("DataMatrix", "Lot 4711, batch 9", "Data Matrix");
    add("Aztec", "Ticket A-113, seat 12", "Aztec");
    add("PDF417", "BOARDING PASS 0042", "PDF417");
    add("EAN-13", "4006381333931", "EAN-13");
    add("EAN-8", "96385074", "EAN-8");
    add("UPC-A", "036000291452", "UPC-A");
    add("UPC-E", "01234565", "UPC-E");
    add("Code39", "LUMORA-39", "Code 39");
    add("Code93", "LUMORA-93", "Code 93");
    add("Code128", "Lumora 128", "Code 128");
    add("ITF", "30712345000010", "ITF");
}

void CodesTest::readsEachFormat()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, content);
    QTEST(read(test::barcode(format, content, 400, 200)).content, "expected");
}

/// The picture on a large sheet, turned.
static QImage onSheet(const QImage &picture, QSize sheetSize, qreal degrees)
{
    QImage sheet(sheetSize, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(sheet.rect().center());
    painter.rotate(degrees);
    painter.drawImage(-picture.rect().center(), picture);
    return sheet;
}

static QImage sideBySide(const QImage &left, const QImage &right)
{
    QImage both(left.width() + right.width(), qMax(left.height(), right.height()), QImage::Format_RGB32);
    both.fill(Qt::white);
    QPainter painter(&both);
    painter.drawImage(0, 0, left);
    painter.drawImage(left.width(), 0, right);
    return both;
}

static QImage negative(QImage image)
{
    image.invertPixels();
    return image;
}

void CodesTest::findsCodes_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QStringList>("expected");
    const QImage square = test::barcode("QRCode", "square", 200, 200);
    const QImage stripes = test::barcode("EAN-13", "4006381333931", 300, 120);
    const QStringList squareLine{"QR Code: square"};
    const QStringList stripesLine{"EAN-13: 4006381333931"};
    QTest::newRow("upside down") << onSheet(stripes, {400, 300}, 180) << stripesLine;
    QTest::newRow("on its side") << onSheet(stripes, {400, 400}, 90) << stripesLine;
    QTest::newRow("square, aslant") << onSheet(square, {400, 400}, 30) << squareLine;
    QTest::newRow("stripes, aslant") << onSheet(stripes, {400, 400}, 7) << stripesLine;
    QTest::newRow("light on dark") << negative(square) << squareLine;
    QTest::newRow("stripes, light on dark") << negative(stripes) << stripesLine;
    QTest::newRow("without a border") << square.copy(square.rect().adjusted(16, 16, -16, -16)) << squareLine;
    QTest::newRow("single pixels") << test::barcode("QRCode", "square", 0, 0) << squareLine;
    QTest::newRow("large photo") << onSheet(square.scaled(2400, 2400), {5000, 4000}, 20) << squareLine;
    QTest::newRow("two kinds") << sideBySide(square, stripes) << stripesLine + squareLine;
    QTest::newRow("both shades") << sideBySide(negative(square), stripes) << stripesLine + squareLine;
    QTest::newRow("two of a kind") << sideBySide(square, test::barcode("QRCode", "other", 200, 200))
                                   << QStringList{"QR Code: other"} + squareLine;
    QTest::newRow("the same twice") << sideBySide(square, square) << squareLine;
}

void CodesTest::findsCodes()
{
    QFETCH(QImage, picture);
    QStringList lines = read(picture).content.split(u'\n');
    lines.sort();
    QTEST(lines, "expected");
}

void CodesTest::writesAnyContent_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    QTest::newRow("several lines") << QByteArray("BEGIN:VCARD\r\nN:Doe\r\nEND:VCARD\r\n")
                                   << "QR Code:\nBEGIN:VCARD\nN:Doe\nEND:VCARD";
    QTest::newRow("a terminal's commands")
        << QByteArray("red \x1B[31m alert and some more text") << "QR Code: red <U+001B>[31m alert and some more text";
    QTest::newRow("bytes") << QByteArray::fromHex("00ff80100203") << "QR Code: binary data, 6 bytes: 00 ff 80 10 02 03";
}

void CodesTest::writesAnyContent()
{
    QFETCH(QByteArray, content);
    QTEST(read(test::barcode("QRCode", content, 300, 300)).content, "expected");
}

void CodesTest::saysThatThereIsNothing_data()
{
    QTest::addColumn<QImage>("picture");
    QImage blank(800, 600, QImage::Format_RGB32);
    blank.fill(Qt::gray);
    QTest::newRow("blank") << blank;
    QTest::newRow("one pixel") << blank.copy(0, 0, 1, 1);
    QTest::newRow("noise") << test::noise({1500, 1000});
}

void CodesTest::saysThatThereIsNothing()
{
    QFETCH(QImage, picture);
    QCOMPARE(read(picture), Reading());
}

QTEST_APPLESS_MAIN(CodesTest)
#include "tst_codes.moc"
