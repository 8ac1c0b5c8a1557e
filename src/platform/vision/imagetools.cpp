// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/imagetools.h"

#include "platform/model/errors.h"

#include <QCoreApplication>

namespace lumora {

namespace {

QString nothingFound(ImageReader::Wanted wanted)
{
    return wanted == ImageReader::Wanted::text ? QStringLiteral("No text was found in the attached image.")
                                               : QStringLiteral("No barcode was found in the attached image.");
}

} // namespace

NoArguments::PartiallyGenerated NoArguments::PartiallyGenerated::fromGeneratedContent(const GeneratedContent &content)
{
    return {.id = content.id().value_or(QUuid::createUuid())};
}

GenerationSchema NoArguments::generationSchema()
{
    return {.typeName = QStringLiteral("Arguments"), .properties = {}};
}

NoArguments NoArguments::fromGeneratedContent(const GeneratedContent &)
{
    return {};
}

GeneratedContent NoArguments::generatedContent() const
{
    return GeneratedContent::Properties();
}

QString ImageTool::call(const Arguments & /*arguments*/, const std::stop_token &stop) const
{
    const Reading reading = reader.read(imagePath, wanted, stop);
    switch (reading.outcome) {
    case Reading::Outcome::everything:
        return reading.content;
    case Reading::Outcome::part:
        return reading.content + QStringLiteral("\n\n(The rest of the attached image could not be read in time.)");
    case Reading::Outcome::nothing:
        return nothingFound(wanted);
    case Reading::Outcome::late:
        return QStringLiteral("The attached image could not be read in time.");
    case Reading::Outcome::noLanguage:
        throw ModelError(QCoreApplication::translate(
            "LanguageModel", "Text in images cannot be read, because no language data for text recognition is "
                             "installed. Install a package such as tesseract-ocr-eng and ask again."));
    case Reading::Outcome::noImage:
        break;
    }
    return QStringLiteral("The attached image could not be read: it is missing, damaged, too large, or not an image.");
}

ImageTool ocrTool(const QString &imagePath, const ImageReader &reader)
{
    return {.name = QStringLiteral("readText"),
            .description = QStringLiteral("OCR: read the text in the attached image. Use this before answering about "
                                          "words, text, a page, a sign or a screenshot in the image."),
            .wanted = ImageReader::Wanted::text,
            .imagePath = imagePath,
            .reader = reader};
}

ImageTool barcodeReaderTool(const QString &imagePath, const ImageReader &reader)
{
    return {.name = QStringLiteral("readBarcodes"),
            .description = QStringLiteral("Barcode reader: read the barcodes and QR codes in the attached image. Use "
                                          "this before answering about a code in the image or what it contains."),
            .wanted = ImageReader::Wanted::barcodes,
            .imagePath = imagePath,
            .reader = reader};
}

} // namespace lumora
