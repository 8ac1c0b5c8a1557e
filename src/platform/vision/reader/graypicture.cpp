// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/graypicture.h"

#include "platform/images/imagefile.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace lumora {

namespace {

constexpr int longestSide = 32000; // the libraries count pixels in 16 bits
constexpr int tileSide = 32;       // a few letters at the usual sizes
constexpr int leastContrast = 32;  // what stands on a tile is less than this away from its ground only as noise
constexpr int unevenLight = 60;    // how much the ground differs across a page before one threshold fits it no more

QSize sizeWithin(QSize size, qint64 mostPixels)
{
    if (size.isEmpty())
        return {longestSide, longestSide};
    const double byArea = std::sqrt(double(mostPixels) / (double(size.width()) * size.height()));
    const double bySide = double(longestSide) / std::max(size.width(), size.height());
    const double factor = std::min({1.0, byArea, bySide});
    return QSize(int(size.width() * factor), int(size.height() * factor)).expandedTo({1, 1});
}

/// Dark for what is light and mostly transparent, as white writing on nothing is; white otherwise.
Qt::GlobalColor groundFor(const QImage &premultiplied)
{
    qint64 light = 0;
    qint64 cover = 0;
    for (int y = 0; y < premultiplied.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(premultiplied.constScanLine(y));
        for (int x = 0; x < premultiplied.width(); ++x) {
            light += qGray(line[x]);
            cover += qAlpha(line[x]);
        }
    }
    const qint64 whole = qint64(premultiplied.width()) * premultiplied.height() * 255;
    return light > cover / 2 && cover < whole / 2 ? Qt::black : Qt::white;
}

QImage flattened(const QImage &image)
{
    const QImage drawn = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage ground(image.size(), QImage::Format_RGB32);
    ground.fill(groundFor(drawn));
    QPainter(&ground).drawImage(0, 0, drawn);
    return ground;
}

/// What one tile of a picture shows: a ground, and whether something dark or light stands on it.
struct Tile
{
    int ground = 0;
    bool isDarkOnLight = false;
    bool isLightOnDark = false;
};

Tile tileAt(const QImage &gray, int left, int top)
{
    std::array<int, 256> counts{};
    for (int y = top; y < top + tileSide; y += 2) {
        const uchar *line = gray.constScanLine(y) + left;
        for (int x = 0; x < tileSide; x += 2)
            ++counts.at(line[x]);
    }
    constexpr int samples = tileSide * tileSide / 4;
    const auto percentile = [&counts](int percent) {
        int level = 0;
        for (int below = counts.front(); below * 100 <= samples * percent && level < 255; below += counts.at(level))
            ++level;
        return level;
    };
    const int low = percentile(5);
    const int middle = percentile(50);
    const int high = percentile(95);
    const bool hasContrast = high - low >= leastContrast;
    return {middle, hasContrast && high - middle < middle - low, hasContrast && high - middle > middle - low};
}

} // namespace

std::optional<QImage> readGrayPicture(int descriptor, qint64 mostPixels)
{
    std::optional<QImage> image = readImage(descriptor, sizeWithin(imageSize(descriptor), mostPixels));
    if (!image)
        return std::nullopt;
    if (image->hasAlphaChannel())
        image = flattened(*image);
    return image->convertToFormat(QImage::Format_Grayscale8);
}

PagePicture pagePicture(const QImage &gray)
{
    std::vector<Tile> tiles;
    for (int top = 0; top + tileSide <= gray.height(); top += tileSide) {
        for (int left = 0; left + tileSide <= gray.width(); left += tileSide)
            tiles.push_back(tileAt(gray, left, top));
    }
    const auto darkOnLight = std::ranges::count_if(tiles, &Tile::isDarkOnLight);
    const auto lightOnDark = std::ranges::count_if(tiles, &Tile::isLightOnDark);
    const bool isNegative = lightOnDark > darkOnLight;

    std::vector<int> grounds;
    for (const Tile &tile : tiles) {
        if (isNegative ? tile.isLightOnDark : tile.isDarkOnLight)
            grounds.push_back(tile.ground);
    }
    std::ranges::sort(grounds);
    PagePicture page{.gray = gray, .isUnevenlyLit = false};
    if (!grounds.empty())
        page.isUnevenlyLit = grounds[grounds.size() * 9 / 10] - grounds[grounds.size() / 10] > unevenLight;
    if (isNegative)
        page.gray.invertPixels();
    return page;
}

} // namespace lumora
