// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/barcodereadertool.h"

#include "platform/vision/barcodereader.h"
#include "platform/vision/graypicture.h"

#include <QStringList>

namespace lumora {

namespace {

constexpr qint64 mostPixels = 12'000'000; // a photo; codes that need more are not meant to be photographed

QString lineFor(const Barcode &code)
{
    const bool isLong = code.content.contains(u'\n');
    return code.type + (isLong ? QLatin1String(":\n") : QLatin1String(": ")) + code.content;
}

} // namespace

QString BarcodeReaderTool::defaultName()
{
    return QStringLiteral("readBarcodes");
}

QString BarcodeReaderTool::defaultDescription()
{
    return QStringLiteral("Barcode reader: read the barcodes and QR codes in the attached image. Use this before "
                          "answering about a code in the image or what it contains.");
}

QString BarcodeReaderTool::call(const Arguments &) const
{
    const std::optional<QImage> gray = readGrayPicture(imagePath, mostPixels);
    if (!gray)
        return unreadableImageAnswer();
    QStringList lines;
    for (const Barcode &code : readBarcodes(*gray))
        lines.append(lineFor(code));
    if (lines.isEmpty())
        return QStringLiteral("No barcode was found in the attached image.");
    return lines.join(u'\n');
}

} // namespace lumora
