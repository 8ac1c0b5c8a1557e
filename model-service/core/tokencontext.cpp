// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/tokencontext.h"

#include "core/failure.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace lumora::service {

namespace {

std::size_t commonPrefix(const std::vector<Token> &left, const std::vector<Token> &right)
{
    const auto mismatch = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    return static_cast<std::size_t>(std::distance(left.begin(), mismatch.first));
}

} // namespace

TokenContext::TokenContext(Engine &engine)
    : m_engine(engine)
{
}

void TokenContext::advanceTo(const std::vector<Token> &tokens, const std::stop_token &stop)
{
    // The last token is evaluated always: what to sample from is its result, which is not kept with the tokens.
    std::size_t kept = std::min(commonPrefix(m_tokens, tokens), tokens.size() - 1);
    if (kept < m_tokens.size())
        kept = m_engine.keep(kept);

    m_tokens.clear(); // holds whatever evaluate throws
    const std::size_t held = m_engine.evaluate(std::span(tokens).subspan(kept), kept, stop);
    m_tokens.assign(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(held));
    m_evaluatedCount += held - std::min(held, kept);
    if (held < tokens.size())
        throw cancelled();
}

void TokenContext::forget()
{
    if (m_engine.contextSize() > 0)
        m_engine.keep(0);
    m_tokens.clear();
}

} // namespace lumora::service
