// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/ocrtool.h"

namespace lumora {

QString OCRTool::defaultName()
{
    return QStringLiteral("readText");
}

QString OCRTool::defaultDescription()
{
    return QStringLiteral("OCR: read the text in the attached image. Use this before answering about words, text, a "
                          "page, a sign or a screenshot in the image.");
}

QString OCRTool::call(const Arguments &) const
{
    return readForModel(reader, imagePath, ImageReader::Wanted::text,
                        QStringLiteral("No text was found in the attached image."));
}

} // namespace lumora
