// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/barcodereadertool.h"

namespace lumora {

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
    return readForModel(reader, imagePath, ImageReader::Wanted::barcodes,
                        QStringLiteral("No barcode was found in the attached image."));
}

} // namespace lumora
