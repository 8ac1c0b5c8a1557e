// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace lumora {

/// What an image file may ask for before it is refused.
struct ImageLimits
{
    qint64 fileBytes;
    qint64 pixels;             ///< as the file's header has them
    int decodedMebibytes;      ///< of the decoded image
    std::chrono::seconds time; ///< from opening to the last byte
};
inline constexpr ImageLimits imageLimits{
    .fileBytes = 256LL * 1024 * 1024,
    .pixels = 100'000'000,
    .decodedMebibytes = 400,
    .time = std::chrono::seconds(15),
};

/// The extensions of the files that can be read here, such as "png", in lower case.
QStringList readableImageExtensions();

/// The size in which the image is shown, turned upright. Reads only the file's header. Empty where it is no readable
/// image, exceeds the limits, or has a header that does not say. Any thread.
QSize imageSize(const QString &path);

/// The image's pixels (the first ones of an animation), turned upright and in sRGB. Nothing where it is no readable
/// image of pixels or exceeds the limits; one that is too large by its header is not decoded. What the name says about
/// the format does not count. largestSize: a larger image is scaled down into it while it is read; an empty one leaves
/// it as it is. Blocks for at most the time limit and what the decoder takes for what it has got; any thread.
std::optional<QImage> readImage(const QString &path, QSize largestSize = {});

/// The same of a file that is open for reading, which stays open.
QSize imageSize(int descriptor);
std::optional<QImage> readImage(int descriptor, QSize largestSize = {});

} // namespace lumora
