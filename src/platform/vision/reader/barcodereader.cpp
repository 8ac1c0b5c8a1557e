// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/barcodereader.h"

#include <algorithm>
#include <cstring>

#define ZX_USE_UTF8 // its texts are std::string
#include <ZXing/ReadBarcode.h>

namespace lumora {

namespace {

using ZXing::BarcodeFormat;

constexpr int quietZone = 16;  // in pixels; codes are often cut out without the white around them
constexpr int smallSide = 600; // by its longer side; its codes may be of single pixels
constexpr int enlarging = 3;
constexpr int mostBytesShown = 200;

QString typeName(BarcodeFormat format)
{
    switch (format) {
    case BarcodeFormat::QRCode:
        return QStringLiteral("QR Code");
    case BarcodeFormat::MicroQRCode:
        return QStringLiteral("Micro QR Code");
    case BarcodeFormat::DataMatrix:
        return QStringLiteral("Data Matrix");
    case BarcodeFormat::Code39:
        return QStringLiteral("Code 39");
    case BarcodeFormat::Code93:
        return QStringLiteral("Code 93");
    case BarcodeFormat::Code128:
        return QStringLiteral("Code 128");
    default:
        return QString::fromLatin1(ZXing::ToString(format)); // the others are called by their names
    }
}

// The separators of GS1 and of shipping labels stand between texts.
bool isSeparator(QChar character)
{
    return character == u'\t' || character == u'\n' || character == u'\r' || character == u'\x04' ||
           (character >= u'\x1C' && character <= u'\x1E');
}

bool isUnprintable(QChar character)
{
    return (character.category() == QChar::Other_Control && !isSeparator(character)) ||
           character == QChar::ReplacementCharacter;
}

/// Whether a character would act on the text around it instead of standing in it.
bool isActing(QChar character)
{
    const bool turnsText = (character >= u'\u202A' && character <= u'\u202E') ||
                           (character >= u'\u2066' && character <= u'\u2069') || character == u'\uFEFF';
    return turnsText || (character.category() == QChar::Other_Control && character != u'\t' && character != u'\n');
}

QString spelledOut(const ZXing::ByteArray &bytes)
{
    const QByteArray shown(reinterpret_cast<const char *>(bytes.data()),
                           qMin<qsizetype>(qsizetype(bytes.size()), mostBytesShown));
    QString text = QStringLiteral("binary data, %1 bytes: ").arg(bytes.size()) + QString::fromLatin1(shown.toHex(' '));
    if (shown.size() < qsizetype(bytes.size()))
        text += QStringLiteral(" …");
    return text;
}

QString contentOf(const ZXing::Result &result)
{
    QString text = QString::fromStdString(result.text());
    const auto unprintables = std::ranges::count_if(text, isUnprintable);
    if (unprintables * 10 > text.size())
        return spelledOut(result.bytes());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QString harmless;
    for (const QChar character : std::as_const(text))
        harmless += isActing(character)
                        ? QStringLiteral("<U+%1>").arg(QString::number(character.unicode(), 16).toUpper(), 4, u'0')
                        : QString(character);
    return harmless.trimmed();
}

QImage withQuietZone(const QImage &gray)
{
    QImage result(gray.width() + 2 * quietZone, gray.height() + 2 * quietZone, QImage::Format_Grayscale8);
    result.fill(Qt::white);
    for (int y = 0; y < gray.height(); ++y)
        std::memcpy(result.scanLine(y + quietZone) + quietZone, gray.constScanLine(y), size_t(gray.width()));
    return result;
}

void addCodes(QList<Barcode> &codes, const QImage &gray)
{
    static const ZXing::DecodeHints hints = ZXing::DecodeHints().setFormats(
        BarcodeFormat::QRCode | BarcodeFormat::DataMatrix | BarcodeFormat::Aztec | BarcodeFormat::PDF417 |
        BarcodeFormat::EAN8 | BarcodeFormat::EAN13 | BarcodeFormat::UPCA | BarcodeFormat::UPCE | BarcodeFormat::Code39 |
        BarcodeFormat::Code93 | BarcodeFormat::Code128 | BarcodeFormat::ITF);
    const QImage image = withQuietZone(gray);
    const ZXing::ImageView view(image.constBits(), image.width(), image.height(), ZXing::ImageFormat::Lum,
                                int(image.bytesPerLine()));
    for (const ZXing::Result &result : ZXing::ReadBarcodes(view, hints)) {
        const Barcode code{typeName(result.format()), contentOf(result)};
        if (!codes.contains(code))
            codes.append(code);
    }
}

} // namespace

QList<Barcode> readBarcodes(const QImage &gray)
{
    QImage negative = gray;
    negative.invertPixels();
    QList<Barcode> codes;
    addCodes(codes, gray);
    addCodes(codes, negative);
    if (codes.isEmpty() && qMax(gray.width(), gray.height()) <= smallSide) {
        const auto larger = [](const QImage &image) { return image.scaled(image.size() * enlarging); };
        addCodes(codes, larger(gray));
        addCodes(codes, larger(negative));
    }
    return codes;
}

} // namespace lumora
