// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora::service {

/// Where the tokens of a sequence stand in a model's own counting: each takes one position, but a stretch of an image
/// may take fewer than it has tokens, where the model tells its parts apart by row and column.
class Positions
{
public:
    /// A stretch of an image has come after the first `start` tokens.
    void add(std::size_t start, std::size_t tokens, std::int32_t positions);

    /// What came after the first count tokens is gone.
    void keep(std::size_t count);

    /// The position of the token that follows the first count ones; in a stretch, of its first.
    std::int32_t after(std::size_t count) const;

    /// The tokens that stand up to a position and at it; those of a stretch all together. -1: none.
    std::size_t upTo(std::int32_t position) const;

private:
    struct Stretch
    {
        std::size_t start = 0;
        std::size_t tokens = 0;
        std::int32_t position = 0;
        std::int32_t positions = 0;
    };

    std::vector<Stretch> m_stretches;
};

} // namespace lumora::service
