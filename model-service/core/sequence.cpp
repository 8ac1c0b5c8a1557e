// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/sequence.h"

#include <algorithm>
#include <iterator>

namespace lumora::service {

namespace {

bool isSame(const PlacedStretch &left, const PlacedStretch &right)
{
    return left.start == right.start && left.stretch.size == right.stretch.size && left.part == right.part &&
           (left.image == right.image || *left.image == *right.image);
}

} // namespace

void Sequence::append(std::span<const Token> more)
{
    tokens.insert(tokens.end(), more.begin(), more.end());
}

void Sequence::append(const PreparedImage &prepared, const std::shared_ptr<const wire::Image> &image)
{
    for (std::size_t part = 0; part < prepared.size(); ++part) {
        if (const auto *const marks = std::get_if<std::vector<Token>>(&prepared[part])) {
            append(*marks);
            continue;
        }
        const auto &stretch = std::get<ImageStretch>(prepared[part]);
        stretches.push_back({tokens.size(), stretch, image, part});
        tokens.insert(tokens.end(), stretch.size, imagePlace);
    }
}

Sequence Sequence::prefix(std::size_t count) const
{
    Sequence first;
    first.tokens.assign(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(count));
    std::ranges::copy_if(stretches, std::back_inserter(first.stretches),
                         [count](const PlacedStretch &placed) { return placed.start < count; });
    return first;
}

std::size_t Sequence::wholeUpTo(std::size_t count) const
{
    for (const PlacedStretch &placed : stretches)
        if (placed.start < count && count < placed.start + placed.stretch.size)
            return placed.start;
    return count;
}

std::size_t commonPrefix(const Sequence &left, const Sequence &right)
{
    const auto ends = std::ranges::mismatch(left.tokens, right.tokens);
    const auto count = static_cast<std::size_t>(std::distance(left.tokens.begin(), ends.in1));
    // As far as the tokens agree, a stretch of one stands where one of the other does, until two of them differ.
    const auto [other, own] = std::ranges::mismatch(left.stretches, right.stretches, isSame);
    if (other == left.stretches.end() || own == right.stretches.end())
        return count;
    return std::min({count, other->start, own->start});
}

} // namespace lumora::service
