// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/shape.h"

namespace lumora::training {

/// Columns of marks. The first four are of the token itself, the others of those before it.
enum class Mark {
    endOfLine,
    endOfClause,
    space,       ///< a space and nothing else
    spaceBefore, ///< and something behind it
    afterLine,
    afterClause,
    afterSpace,
    twoAfterClause,
};

/// What the numbers of the width mean in the starting weights; docs/starting-weights.md has them as a table.
struct WidthPlan
{
    static constexpr int writingColumns = 2; ///< the first of the content: a space before the word, a capital
    static constexpr int markColumns = 8;

    /// Throws std::invalid_argument where the shape has no room for it.
    explicit WidthPlan(const Shape &shape);

    int fast;     ///< the first of a head's numbers that turn so slowly that distance hardly matters
    int slot;     ///< columns of a slot, as many as there are slow numbers
    int content;  ///< columns of the content, which are the first
    int constant; ///< the column of what all tokens have in common
    int headSize;
    int previousSlot; ///< the first column, as in the following
    int secondSlot;
    int beginningSlot;
    int againSlot;
    int firstMark;

    int column(Mark mark) const { return firstMark + static_cast<int>(mark); }
};

} // namespace lumora::training
