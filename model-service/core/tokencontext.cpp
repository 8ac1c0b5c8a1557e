// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/tokencontext.h"

#include "core/failure.h"

#include <algorithm>
#include <span>

namespace lumora::service {

TokenContext::TokenContext(Engine &engine)
    : m_engine(engine)
{
}

void TokenContext::advanceTo(const Sequence &sequence, const std::stop_token &stop)
{
    // The last token is evaluated always: what to sample from is its result, which is not kept with the tokens.
    const std::size_t count = sequence.tokens.size();
    std::size_t kept = sequence.wholeUpTo(std::min(commonPrefix(m_held, sequence), count - 1));
    if (kept < m_held.tokens.size())
        kept = m_engine.keep(kept);

    m_held = {}; // holds whatever the engine throws
    const std::size_t held = evaluate(sequence, kept, stop);
    m_held = sequence.prefix(held);
    m_evaluatedCount += held - std::min(held, kept);
    if (held < count)
        throw cancelled();
}

/// Returns how much is evaluated then, all together.
std::size_t TokenContext::evaluate(const Sequence &sequence, std::size_t from, const std::stop_token &stop)
{
    const std::span<const Token> tokens(sequence.tokens);
    const auto evaluateText = [&](std::size_t end) {
        return from < end ? m_engine.evaluate(tokens.subspan(from, end - from), from, stop) : from;
    };
    for (const PlacedStretch &placed : sequence.stretches) {
        if (placed.start < from)
            continue;
        from = evaluateText(placed.start);
        if (from == placed.start)
            from = m_engine.evaluateImage(placed.stretch.number, from, stop);
        if (from < placed.start + placed.stretch.size)
            return from;
    }
    return evaluateText(tokens.size());
}

void TokenContext::forget()
{
    if (m_engine.contextSize() > 0)
        m_engine.keep(0);
    m_held = {};
}

} // namespace lumora::service
