// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora::training {

/// Adam: each weight moves by its mean gradient over the root of its mean square, so that all learn at one pace.
class Adam
{
public:
    static constexpr float meanDecay = 0.9F;
    static constexpr float squareDecay = 0.98F;

    explicit Adam(std::size_t weights);

    /// Counts a step; then each part of the weights is to be moved once.
    void beginStep() { ++m_state.steps; }

    /// Moves the weights from one up to another. gradients: of all weights, to be summed and multiplied with the
    /// factor; set to zero in this part. Threads may move different parts at once.
    void move(std::span<float> weights, std::span<std::vector<float>> gradients, std::size_t from, std::size_t to,
              float factor, float rate);

    /// What is remembered between steps; for a checkpoint.
    struct State
    {
        std::int64_t steps = 0;
        std::vector<float> means;
        std::vector<float> squares;
    };
    State &state() { return m_state; }
    const State &state() const { return m_state; }

private:
    State m_state;
};

} // namespace lumora::training
