// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "core/keptstates.h"
#include "core/sequence.h"

#include <cstddef>
#include <stop_token>

namespace lumora::service {

/// Knows which sequence an engine stands after, and takes it on to another at the least cost: what both begin with is
/// kept. What it turns away from is kept aside, since the next question may go on from there: other tools change what a
/// request begins with.
class TokenContext
{
public:
    explicit TokenContext(Engine &engine);

    /// The engine stands after this sequence then, ready to sample. It has at least one token, no more than the context
    /// holds, and no stretches but of the images that were prepared last. Throws Failure: cancelled, after which what
    /// was evaluated until then is still known, and internal.
    void advanceTo(const Sequence &sequence, const std::stop_token &stop);

    /// The engine's model was replaced, or its state is in doubt.
    void forget();

    /// Tokens that were evaluated in all the time since this was made.
    std::size_t evaluatedCount() const { return m_evaluatedCount; }

private:
    void turnTo(const Sequence &sequence);
    std::size_t evaluate(const Sequence &sequence, std::size_t from, const std::stop_token &stop);

    Engine &m_engine;
    Sequence m_held; // that the engine stands after
    KeptStates m_aside;
    std::size_t m_evaluatedCount = 0;
};

} // namespace lumora::service
