// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

#include <optional>

namespace lumora {

/// How light each pixel of an open image file is (Grayscale8, 255 for white), as readImage reads it. What is
/// transparent shows a ground from which the rest stands out. Larger images are scaled down to mostPixels, and to sides
/// that every library can count. Nothing where readImage gives nothing.
std::optional<QImage> readGrayPicture(int descriptor, qint64 mostPixels);

/// A page as a recogniser likes it.
struct PagePicture
{
    QImage gray; ///< Grayscale8, dark text on a light ground
    bool isUnevenlyLit = false;
};

/// Turns light text on a dark ground into its negative. gray: Grayscale8.
PagePicture pagePicture(const QImage &gray);

} // namespace lumora
