// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/positions.h"

#include <algorithm>

namespace lumora::service {

void Positions::add(std::size_t start, std::size_t tokens, std::int32_t positions)
{
    m_stretches.push_back({start, tokens, after(start), positions});
}

void Positions::keep(std::size_t count)
{
    std::erase_if(m_stretches, [count](const Stretch &stretch) { return stretch.start + stretch.tokens > count; });
}

std::int32_t Positions::after(std::size_t count) const
{
    auto position = static_cast<std::int32_t>(count);
    for (const Stretch &stretch : m_stretches) {
        const std::size_t end = stretch.start + stretch.tokens;
        if (count >= end)
            position = stretch.position + stretch.positions + static_cast<std::int32_t>(count - end);
        else if (count > stretch.start)
            return stretch.position;
    }
    return position;
}

std::size_t Positions::upTo(std::int32_t position) const
{
    auto tokens = static_cast<std::size_t>(position + 1);
    for (const Stretch &stretch : m_stretches) {
        if (position < stretch.position)
            break;
        const std::int32_t last = stretch.position + stretch.positions - 1;
        tokens = stretch.start + stretch.tokens + static_cast<std::size_t>(std::max(position - last, 0));
    }
    return tokens;
}

} // namespace lumora::service
