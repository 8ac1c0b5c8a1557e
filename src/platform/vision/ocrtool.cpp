// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/ocrtool.h"

#include "platform/vision/ocrlanguages.h"
#include "platform/vision/textrecognizer.h"

#include <QLocale>

#include <chrono>

namespace lumora {

namespace {

constexpr qint64 mostPixels = 16'000'000; // a page of A4 at 400 dpi
constexpr std::chrono::seconds mostTime(25);
constexpr std::chrono::seconds mostTimeForScattered(5);

// Of words nearly all lines are above 80, of textures nearly all below 40. Where no page was found, most is texture.
constexpr float leastConfidence = 40;
constexpr float leastConfidenceOfScattered = 75;
constexpr float confidenceOfUprightPage = 65;

/// A page that is upside down gives lines of unlikely letters; one on its side is recognised as such.
TextRecognizer::Result recognizePage(TextRecognizer &recognizer, const PagePicture &picture, QDeadlineTimer end)
{
    using enum TextRecognizer::Layout;
    TextRecognizer::Result result = recognizer.recognize(picture, page, end);
    const float confidence = meanConfidence(result.lines);
    if (result.lines.isEmpty() || !result.isComplete || confidence >= confidenceOfUprightPage)
        return result;
    TextRecognizer::Result turned =
        recognizer.recognize({picture.gray.mirrored(true, true), picture.isUnevenlyLit}, page, end);
    return meanConfidence(turned.lines) > confidence ? turned : result;
}

QString withNote(const QString &text, const TextRecognizer::Result &result)
{
    if (result.isComplete)
        return text;
    return text + QStringLiteral("\n\n(The rest of the attached image could not be read in time.)");
}

} // namespace

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
    const QDeadlineTimer end(mostTime);
    const std::optional<QImage> gray = readGrayPicture(imagePath, mostPixels);
    if (!gray)
        return unreadableImageAnswer();
    const PagePicture picture = pagePicture(*gray);
    TextRecognizer recognizer(recognitionLanguages(QLocale::system().uiLanguages(), installedRecognitionLanguages()));
    const auto page = recognizePage(recognizer, picture, end);
    if (const QString text = readableText(page.lines, leastConfidence); !text.isEmpty())
        return withNote(text, page);
    if (!page.isComplete)
        return QStringLiteral("The attached image could not be read in time.");
    const auto scattered =
        recognizer.recognize(picture, TextRecognizer::Layout::scattered, QDeadlineTimer(mostTimeForScattered));
    if (const QString text = readableText(scattered.lines, leastConfidenceOfScattered); !text.isEmpty())
        return withNote(text, scattered);
    return QStringLiteral("No text was found in the attached image.");
}

} // namespace lumora
