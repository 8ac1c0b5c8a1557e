// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/keptstates.h"

#include <utility>

namespace lumora::service {

void KeptStates::add(KeptState kept)
{
    if (!kept.state)
        return;
    m_bytes += kept.state->bytes();
    m_states.push_front(std::move(kept));
    while (m_bytes > mostBytes) {
        m_bytes -= m_states.back().state->bytes();
        m_states.pop_back();
    }
}

std::optional<KeptState> KeptStates::takeFor(const Sequence &sequence, std::size_t moreThan)
{
    auto best = m_states.end();
    for (auto kept = m_states.begin(); kept != m_states.end(); ++kept) {
        const std::size_t common = commonPrefix(kept->sequence, sequence);
        if (common <= moreThan)
            continue;
        best = kept;
        moreThan = common;
    }
    if (best == m_states.end())
        return std::nullopt;
    KeptState taken = std::move(*best);
    m_states.erase(best);
    m_bytes -= taken.state->bytes();
    return taken;
}

void KeptStates::clear()
{
    m_states.clear();
    m_bytes = 0;
}

} // namespace lumora::service
