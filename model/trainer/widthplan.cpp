// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/widthplan.h"

#include <stdexcept>

namespace lumora::training {

namespace {

constexpr int slots = 4;
constexpr int spareColumns = 3;

} // namespace

WidthPlan::WidthPlan(const Shape &shape)
    : fast(shape.headSize / 4 * 2)
    , slot(shape.headSize - fast)
    , content(shape.width - 1 - slots * slot - markColumns - spareColumns)
    , constant(shape.width - 1)
    , headSize(shape.headSize)
    , previousSlot(content)
    , secondSlot(previousSlot + slot)
    , beginningSlot(secondSlot + slot)
    , againSlot(beginningSlot + slot)
    , firstMark(againSlot + slot)
{
    const bool hasGroups = shape.keyHeads >= 2 && shape.heads >= 2 * shape.keyHeads;
    if (!hasGroups || shape.layers < 4 || content < shape.headSize || slot % 2 != 0)
        throw std::invalid_argument("a decoder of this shape has no room for the starting weights");
}

} // namespace lumora::training
