// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/tokencontext.h"

#include "core/failure.h"

#include <algorithm>
#include <span>
#include <utility>

namespace lumora::service {

namespace {

// So many tokens are computed again rather than looked for, or kept aside.
constexpr std::size_t soonComputed = 32;

} // namespace

TokenContext::TokenContext(Engine &engine)
    : m_engine(engine)
{
}

void TokenContext::advanceTo(const Sequence &sequence, const std::stop_token &stop)
{
    // The last token is evaluated always: what to sample from is its result, which is not kept with the tokens.
    const std::size_t count = sequence.tokens.size();
    turnTo(sequence);
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

/// Takes up what was kept aside where that saves more, and keeps aside what would be lost.
void TokenContext::turnTo(const Sequence &sequence)
{
    const std::size_t common = commonPrefix(m_held, sequence);
    if (sequence.tokens.size() - common <= soonComputed)
        return;
    auto better = m_aside.takeFor(sequence, common + soonComputed);
    if (m_held.tokens.size() - common > common + soonComputed || better)
        m_aside.add({m_held, m_engine.copyState(KeptStates::mostBytes)});
    if (!better)
        return;
    m_held = {}; // holds where the engine cannot
    if (m_engine.restoreState(*better->state))
        m_held = std::move(better->sequence);
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
    m_aside.clear();
}

} // namespace lumora::service
