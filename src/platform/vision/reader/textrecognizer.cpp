// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/textrecognizer.h"

#include <QDir>
#include <QPainter>

#include <algorithm>
#include <allheaders.h>
#include <cmath>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>
#include <tesseract/resultiterator.h>
#include <vector>

// OpenMP's, as every runtime has it; the header belongs to the compiler, and not each tool that reads this has one.
extern "C" void omp_set_max_active_levels(int levels); // NOLINT(readability-identifier-naming)

namespace lumora {

namespace {

using tesseract::RIL_PARA;
using tesseract::RIL_TEXTLINE;

constexpr double mostPixels = 16'000'000; // after enlarging
constexpr int smallLine = 20;             // pixels from the descenders to the ascenders; below, letters melt together
constexpr int goodLine = 40;
constexpr double mostEnlarging = 3;
constexpr double leastEnlarging = 1.5;
constexpr double smallPicture = 500'000; // pixels; the letters of a larger one are found, however small they are
// A newspaper page has fewer. The search for lines, which nothing else stops, takes seconds for so many.
constexpr int mostSpecks = 25'000;
constexpr float steepestSlope = 15;    // degrees; of a page in somebody's hand
constexpr float leastCertainty = 2.5F; // how much sharper its lines are at this slope than at others
constexpr double leastSlope = 0.7;     // the engine follows lines that slope less

tesseract::PageSegMode segmentation(TextRecognizer::Layout layout)
{
    switch (layout) {
    case TextRecognizer::Layout::page:
        return tesseract::PSM_AUTO;
    case TextRecognizer::Layout::lines:
        return tesseract::PSM_SINGLE_BLOCK;
    case TextRecognizer::Layout::scattered:
        break;
    }
    return tesseract::PSM_SPARSE_TEXT;
}

/// 0 where there is none.
int middleOf(std::vector<int> numbers)
{
    if (numbers.empty())
        return 0;
    const auto middle = numbers.begin() + std::ssize(numbers) / 2;
    std::ranges::nth_element(numbers, middle);
    return *middle;
}

/// Of a line of text; empty where it is none.
QRect boxOf(const tesseract::PageIterator &line)
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    const bool isText = tesseract::PTIsTextType(line.BlockType());
    return isText && line.BoundingBox(RIL_TEXTLINE, &left, &top, &right, &bottom)
               ? QRect(left, top, right - left, bottom - top)
               : QRect();
}

/// Around each connected dark speck of the picture that the layout is found on.
QList<QRect> speckBoxes(tesseract::TessBaseAPI &api)
{
    Pix *binary = api.GetThresholdedImage();
    Boxa *boxes = binary != nullptr ? pixConnCompBB(binary, 8) : nullptr;
    QList<QRect> result;
    for (int i = 0; boxes != nullptr && i < boxaGetCount(boxes); ++i) {
        l_int32 left = 0;
        l_int32 top = 0;
        l_int32 width = 0;
        l_int32 height = 0;
        boxaGetBoxGeometry(boxes, i, &left, &top, &width, &height);
        result.append(QRect(left, top, width, height));
    }
    boxaDestroy(&boxes);
    pixDestroy(&binary);
    return result;
}

/// How much of what looks like the letters of these lines is in none of them.
double shareOutside(const QList<RecognizedLine> &lines, const QList<QRect> &specks)
{
    std::vector<int> heights;
    for (const RecognizedLine &line : lines)
        heights.push_back(line.box.height());
    const int height = middleOf(heights);
    int letters = 0;
    int outside = 0;
    for (const QRect &speck : specks) {
        if (speck.height() < height / 3 || speck.height() > height || speck.width() > height + height / 2)
            continue;
        const auto holdsIt = [&speck](const RecognizedLine &line) { return line.box.contains(speck.center()); };
        ++letters;
        outside += std::ranges::none_of(lines, holdsIt) ? 1 : 0;
    }
    return letters > 0 ? double(outside) / letters : 0;
}

/// What the dark and light picture shows that the layout is found on.
struct Impression
{
    int specks = 0;   ///< connected dark ones
    double slope = 0; ///< degrees to turn it clockwise until its lines are level
};

Impression impressionOf(tesseract::TessBaseAPI &api)
{
    Pix *binary = api.GetThresholdedImage(); // the engine keeps it for what follows
    l_int32 specks = 0;
    l_float32 angle = 0;
    l_float32 certainty = 0;
    if (binary != nullptr) {
        pixCountConnComp(binary, 8, &specks);
        // In steps of a degree on a quarter of the size, then finer on half of it.
        pixFindSkewSweepAndSearch(binary, &angle, &certainty, 4, 2, steepestSlope, 1.0F, 0.1F);
    }
    pixDestroy(&binary);
    return {specks, certainty >= leastCertainty ? angle : 0};
}

QImage turned(const QImage &gray, double degrees)
{
    const QRectF bounds = QTransform().rotate(degrees).mapRect(QRectF(gray.rect()));
    QImage result(bounds.size().toSize(), QImage::Format_Grayscale8);
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(-bounds.topLeft());
    painter.rotate(degrees);
    painter.drawImage(0, 0, gray);
    return result;
}

QImage scaled(const QImage &gray, double factor)
{
    return gray.scaled(int(gray.width() * factor), int(gray.height() * factor), Qt::IgnoreAspectRatio,
                       Qt::SmoothTransformation);
}

} // namespace

QStringList installedRecognitionLanguages()
{
    // Only a start tells the folder; it may fail, and does so at once for a language that nobody speaks.
    tesseract::TessBaseAPI api;
    api.Init(nullptr, "none");
    QStringList names = QDir(QString::fromLocal8Bit(api.GetDatapath()))
                            .entryList({QStringLiteral("*.traineddata")}, QDir::Files, QDir::Name);
    for (QString &name : names)
        name.chop(qsizetype(sizeof(".traineddata")) - 1);
    return names;
}

TextRecognizer::TextRecognizer()
    : m_api(std::make_unique<tesseract::TessBaseAPI>())
{
    // It would split loops of microseconds among more threads than most machines have cores, and take ten times as long
    // wherever another program runs. This counts for the calling thread.
    omp_set_max_active_levels(0);
}

bool TextRecognizer::load(const QStringList &languages)
{
    return !languages.isEmpty() && m_api->Init(nullptr, languages.join(u'+').toLocal8Bit().constData()) == 0;
}

TextRecognizer::~TextRecognizer() = default;

TextRecognizer::Result TextRecognizer::recognize(const PagePicture &page, Layout layout, QDeadlineTimer end)
{
    m_api->SetPageSegMode(segmentation(layout));
    m_api->SetVariable("thresholding_method", page.isUnevenlyLit ? "2" : "0"); // Sauvola's, Otsu's
    const std::optional<double> slope = show(page.gray);
    if (!slope || (std::abs(*slope) >= leastSlope && !show(turned(m_shown, *slope))))
        return {};
    const double factor = enlarging();
    if (factor == 0 || (factor >= leastEnlarging && !show(scaled(m_shown, factor))))
        return {};
    tesseract::ETEXT_DESC monitor;
    if (!end.isForever())
        monitor.set_deadline_msecs(int(std::max<qint64>(end.remainingTime(), 1)));
    Result result;
    result.isComplete = m_api->Recognize(&monitor) == 0;
    result.lines = lines();
    if (layout == Layout::page && !result.lines.isEmpty())
        result.leftOut = shareOutside(result.lines, speckBoxes(*m_api));
    return result;
}

/// Gives the picture to the engine, made smaller where it is too busy to be looked through. By how many degrees its
/// lines have to be turned clockwise; nothing where it is empty.
std::optional<double> TextRecognizer::show(const QImage &gray)
{
    for (m_shown = gray; !m_shown.isNull(); m_shown = scaled(m_shown, 0.5)) {
        m_api->SetImage(m_shown.constBits(), m_shown.width(), m_shown.height(), 1, int(m_shown.bytesPerLine()));
        const Impression impression = impressionOf(*m_api);
        if (impression.specks == 0)
            return std::nullopt;
        if (impression.specks <= mostSpecks)
            return impression.slope;
    }
    return std::nullopt;
}

/// How many times larger the picture has to be for its text to be recognised; 0 where there is none.
double TextRecognizer::enlarging()
{
    const double area = double(m_shown.width()) * m_shown.height();
    const int height = lineHeight();
    if (height >= smallLine)
        return 1;
    if (height == 0 && area > smallPicture)
        return 0;
    return std::min({double(goodLine) / std::max(height, 1), mostEnlarging, std::sqrt(mostPixels / area)});
}

/// The middle one of all lines, in pixels; 0 where there are none. The engine goes on from what this finds.
int TextRecognizer::lineHeight()
{
    const std::unique_ptr<tesseract::PageIterator> line(m_api->AnalyseLayout());
    std::vector<int> heights;
    if (!line)
        return 0;
    do {
        if (const QRect box = boxOf(*line); !box.isEmpty())
            heights.push_back(box.height());
    } while (line->Next(RIL_TEXTLINE));
    return middleOf(heights);
}

QList<RecognizedLine> TextRecognizer::lines() const
{
    QList<RecognizedLine> result;
    const std::unique_ptr<tesseract::ResultIterator> line(m_api->GetIterator());
    if (!line)
        return result;
    do {
        const QRect box = boxOf(*line);
        if (line->Empty(RIL_TEXTLINE) || box.isEmpty())
            continue;
        const std::unique_ptr<char[]> text(line->GetUTF8Text(RIL_TEXTLINE));
        result.append({QString::fromUtf8(text.get()), line->Confidence(RIL_TEXTLINE),
                       line->IsAtFinalElement(RIL_PARA, RIL_TEXTLINE), box});
    } while (line->Next(RIL_TEXTLINE));
    return result;
}

} // namespace lumora
