// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/promptimages.h"

#include "platform/images/imagefile.h"
#include "platform/model/replyworkers.h"

#include <QPainter>
#include <QtConcurrent>

#include <algorithm>
#include <utility>
#include <wire/frame.h>

namespace lumora {

namespace {

// No model that runs here sees more than this at once, and a few such images fit into a frame.
constexpr int largestSide = 1344;   // pixels
constexpr int mostTimesAsLong = 16; // times that one side may be as long as the other
static_assert(4 * 4 * qint64{largestSide} * largestSide < qint64{wire::maximumBodySize});

/// As on paper where it is transparent, and with paper beside it where it is so thin that models cannot lay it out.
QImage onPaper(const QImage &image)
{
    const int leastSide = std::max(image.width(), image.height()) / mostTimesAsLong;
    QImage paper(image.size().expandedTo({leastSide, leastSide}), QImage::Format_RGB888);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, image);
    return paper;
}

std::optional<wire::Image> readPixels(const QString &path)
{
    const std::optional<QImage> image = readImage(path, {largestSide, largestSide});
    if (!image)
        return std::nullopt;
    const QImage pixels = onPaper(*image);
    if (pixels.isNull())
        return std::nullopt;
    wire::Image message{pixels.width(), pixels.height(), {}};
    message.pixels.reserve(size_t(3) * pixels.width() * pixels.height());
    for (int row = 0; row < pixels.height(); ++row) // whose ends are padded
        message.pixels.append(reinterpret_cast<const char *>(pixels.constScanLine(row)), size_t(3) * pixels.width());
    return message;
}

AttachedImages readAll(const QList<Attachment> &attachments)
{
    AttachedImages images;
    for (const Attachment &attachment : attachments)
        images.push_back(readPixels(attachment.path()));
    return images;
}

} // namespace

PromptImages::PromptImages(QList<Attachment> attachments)
{
    connect(&m_reading, &QFutureWatcherBase::finished, this, &PromptImages::read);
    m_reading.setFuture(QtConcurrent::run(replyWorkers(), readAll, std::move(attachments)));
}

} // namespace lumora
