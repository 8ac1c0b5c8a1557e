// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "core/sequence.h"

#include <cstddef>
#include <list>
#include <memory>
#include <optional>

namespace lumora::service {

/// A sequence and what was computed for it.
struct KeptState
{
    Sequence sequence;
    std::unique_ptr<ComputedState> state;
};

/// What was computed for sequences that the engine has turned away from. The ones kept last remain, as many as there is
/// room for.
class KeptStates
{
public:
    static constexpr std::size_t mostBytes = 256UL << 20U;

    /// No state: it is not kept.
    void add(KeptState kept);

    /// Takes out the one that has the most in common with a sequence from the start on, if that is more than so many
    /// places.
    std::optional<KeptState> takeFor(const Sequence &sequence, std::size_t moreThan);

    void clear();

private:
    std::list<KeptState> m_states; // the latest first
    std::size_t m_bytes = 0;
};

} // namespace lumora::service
