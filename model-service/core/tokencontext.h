// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"

#include <cstddef>
#include <stop_token>
#include <vector>

namespace lumora::service {

/// Knows which tokens an engine stands after, and takes it on to others at the least cost: what both begin with is
/// kept.
class TokenContext
{
public:
    explicit TokenContext(Engine &engine);

    /// The engine stands after these tokens then, ready to sample. They are at least one and no more than the context
    /// holds. Throws Failure: cancelled, after which what was evaluated until then is still known, and internal.
    void advanceTo(const std::vector<Token> &tokens, const std::stop_token &stop);

    /// The engine's model was replaced, or its state is in doubt.
    void forget();

    /// Tokens that were evaluated in all the time since this was made.
    std::size_t evaluatedCount() const { return m_evaluatedCount; }

private:
    Engine &m_engine;
    std::vector<Token> m_tokens; // that the engine stands after
    std::size_t m_evaluatedCount = 0;
};

} // namespace lumora::service
