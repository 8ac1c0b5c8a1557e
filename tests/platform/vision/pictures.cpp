// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/pictures.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QRandomGenerator>
#include <QTransform>

#include <string>

#define ZX_USE_UTF8
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

namespace lumora::test {

namespace {

QImage asStored(const QImage &upright, int orientation)
{
    const auto turned = [&upright](int degrees) { return upright.transformed(QTransform().rotate(degrees)); };
    switch (orientation) {
    case 2:
        return upright.mirrored(true, false);
    case 3:
        return upright.mirrored(true, true);
    case 4:
        return upright.mirrored(false, true);
    case 5:
        return turned(90).mirrored(true, false);
    case 6:
        return turned(-90);
    case 7:
        return turned(90).mirrored(false, true);
    case 8:
        return turned(90);
    default:
        return upright;
    }
}

} // namespace

QByteArray jpegOfCamera(const QImage &upright, int orientation)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    asStored(upright, orientation).save(&buffer, "JPEG", 100);

    QByteArray exif("Exif\0\0", 6);
    exif += QByteArray::fromHex("49492a0008000000"); // little endian; the directory begins 8 bytes in
    exif += QByteArray::fromHex("0100"               // of one entry:
                                "12010300"           // orientation, a number of 16 bits,
                                "01000000");         // one of it
    exif += char(orientation);
    exif += QByteArray(7, '\0'); // the rest of the value, and no further directory
    const auto length = quint16(exif.size() + 2);
    QByteArray segment = QByteArray::fromHex("ffe1");
    segment += char(length >> 8);
    segment += char(length & 0xFF);
    return jpeg.insert(2, segment + exif);
}

QImage written(const Writing &writing)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(writing.pixelSize);
    const QFontMetrics metrics(font);
    const int margin = 2 * writing.pixelSize;
    int width = 0;
    for (const QString &line : writing.lines)
        width = qMax(width, metrics.horizontalAdvance(line));
    const int step = metrics.lineSpacing() + writing.pixelSize / 4;
    QImage image(width + 2 * margin, int(writing.lines.size()) * step + 2 * margin, QImage::Format_ARGB32);
    image.fill(writing.ground);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(writing.ink);
    for (int i = 0; i < writing.lines.size(); ++i)
        painter.drawText(margin, margin + i * step + metrics.ascent(), writing.lines.at(i));
    return image;
}

QImage noise(QSize size)
{
    QRandomGenerator random(1);
    QImage image(size, QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        uchar *line = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            line[x] = uchar(random.generate());
    }
    return image;
}

QImage barcode(const QByteArray &format, const QByteArray &bytes, int width, int height)
{
    ZXing::MultiFormatWriter writer(ZXing::BarcodeFormatFromString(format.toStdString()));
    writer.setMargin(10);
    std::wstring text;
    for (const char byte : bytes)
        text += wchar_t(uchar(byte));
    const ZXing::BitMatrix matrix = writer.encode(text, width, height);
    QImage image(matrix.width(), matrix.height(), QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        uchar *line = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            line[x] = matrix.get(x, y) ? 0 : 255;
    }
    return image;
}

QImage endlessCodes()
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

} // namespace lumora::test
