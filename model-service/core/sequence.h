// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "wire/messages.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace lumora::service {

/// What stands in a sequence's tokens at the places of an image; no token of any model.
constexpr Token imagePlace = -2;

/// A stretch of an image among tokens.
struct PlacedStretch
{
    std::size_t start = 0; ///< the first of its places
    ImageStretch stretch;
    std::shared_ptr<const wire::Image> image;
    std::size_t part = 0; ///< which one of the image's
};

/// What a model reads and writes: tokens, and stretches of images, each of which takes as many places as it has tokens.
struct Sequence
{
    std::vector<Token> tokens;
    std::vector<PlacedStretch> stretches; ///< in the order of their places

    void append(std::span<const Token> more);
    void append(const PreparedImage &prepared, const std::shared_ptr<const wire::Image> &image);

    /// The first count places.
    Sequence prefix(std::size_t count) const;

    /// count, or the start of the stretch that these first places would cut in two.
    std::size_t wholeUpTo(std::size_t count) const;
};

/// The places from the start on that two sequences have in common. Stretches are the same where their images are, pixel
/// by pixel.
std::size_t commonPrefix(const Sequence &left, const Sequence &right);

} // namespace lumora::service
