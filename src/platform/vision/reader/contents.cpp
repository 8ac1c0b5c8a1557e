// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/contents.h"

#include "platform/vision/reader/barcodereader.h"
#include "platform/vision/reader/ocrlanguages.h"
#include "platform/vision/reader/textrecognizer.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumora {

namespace {

using Outcome = Reading::Outcome;

constexpr qint64 mostPixelsOfPage = 16'000'000;  // A4 at 400 dpi
constexpr qint64 mostPixelsOfCodes = 12'000'000; // a photo; codes that need more are not meant to be photographed
constexpr std::chrono::seconds mostTime(25);
constexpr std::chrono::seconds mostTimeForScattered(5);

// Of words nearly all lines are above 80, and above this where they are short or no prose; of textures few are. Where
// no page was found, most is texture.
constexpr float leastConfidence = 30;
constexpr float leastConfidenceOfScattered = 75;
constexpr float confidenceOfUprightPage = 65;

// Of the letters of pages nearly all are in lines. What is found from edge to edge counts where it is much more, and
// about as certain as what was found before: textures would be neither.
constexpr double leastLeftOut = 0.05;
constexpr float leastGain = 1.1F;
constexpr float mostLoss = 10;
constexpr float leastMeanConfidence = 75;

/// A page that is upside down gives lines of unlikely letters; one on its side is recognised as such. Turns the picture
/// where it is read better so.
TextRecognizer::Result recognizeUpright(TextRecognizer &recognizer, PagePicture &picture, QDeadlineTimer end)
{
    using enum TextRecognizer::Layout;
    TextRecognizer::Result result = recognizer.recognize(picture, page, end);
    const float confidence = meanConfidence(result.lines);
    if (result.lines.isEmpty() || !result.isComplete || confidence >= confidenceOfUprightPage)
        return result;
    PagePicture turned{picture.gray.mirrored(true, true), picture.isUnevenlyLit};
    TextRecognizer::Result ofTurned = recognizer.recognize(turned, page, end);
    if (meanConfidence(ofTurned.lines) <= confidence)
        return result;
    picture = std::move(turned);
    return ofTurned;
}

bool holdsMore(const QList<RecognizedLine> &lines, const QList<RecognizedLine> &others)
{
    return certainCharacters(lines) > certainCharacters(others) * leastGain &&
           meanConfidence(lines) > std::max(meanConfidence(others) - mostLoss, leastMeanConfidence);
}

/// A column of short numbers, as that of the prices on a receipt, is often taken for no text. Where something was left
/// out, lines are read from edge to edge, which would mix the columns of other pages.
TextRecognizer::Result recognizePage(TextRecognizer &recognizer, PagePicture picture, QDeadlineTimer end)
{
    TextRecognizer::Result result = recognizeUpright(recognizer, picture, end);
    if (result.isComplete && result.lines.isEmpty()) { // in dim light the threshold may be the wrong one
        picture.isUnevenlyLit = !picture.isUnevenlyLit;
        result = recognizeUpright(recognizer, picture, end);
    }
    if (!result.isComplete || result.leftOut < leastLeftOut)
        return result;
    TextRecognizer::Result whole = recognizer.recognize(picture, TextRecognizer::Layout::lines, end);
    return whole.isComplete && holdsMore(whole.lines, result.lines) ? whole : result;
}

Reading readingOf(const TextRecognizer::Result &result, float confidence)
{
    const QString text = readableText(result.lines, confidence);
    if (text.isEmpty())
        return {result.isComplete ? Outcome::nothing : Outcome::late, {}};
    return {result.isComplete ? Outcome::everything : Outcome::part, text};
}

QString lineFor(const Barcode &code)
{
    const bool isLong = code.content.contains(u'\n');
    return code.type + (isLong ? QLatin1String(":\n") : QLatin1String(": ")) + code.content;
}

} // namespace

Reading readWriting(int descriptor, const QStringList &uiLanguages)
{
    const QDeadlineTimer end(mostTime);
    const std::optional<QImage> gray = readGrayPicture(descriptor, mostPixelsOfPage);
    if (!gray)
        return {Outcome::noImage, {}};
    TextRecognizer recognizer;
    if (!recognizer.load(recognitionLanguages(uiLanguages, installedRecognitionLanguages())))
        return {Outcome::noLanguage, {}};
    const PagePicture picture = pagePicture(*gray);
    Reading page = readingOf(recognizePage(recognizer, picture, end), leastConfidence);
    if (page.outcome != Outcome::nothing)
        return page;
    Reading scattered = readingOf(
        recognizer.recognize(picture, TextRecognizer::Layout::scattered, QDeadlineTimer(mostTimeForScattered)),
        leastConfidenceOfScattered);
    return scattered.outcome == Outcome::late ? page : scattered;
}

Reading readCodes(int descriptor)
{
    const std::optional<QImage> gray = readGrayPicture(descriptor, mostPixelsOfCodes);
    if (!gray)
        return {Outcome::noImage, {}};
    QStringList lines;
    for (const Barcode &code : readBarcodes(*gray))
        lines.append(lineFor(code));
    return lines.isEmpty() ? Reading{Outcome::nothing, {}} : Reading{Outcome::everything, lines.join(u'\n')};
}

} // namespace lumora
