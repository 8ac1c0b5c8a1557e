// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/adam.h"

#include <cmath>

namespace lumora::training {

Adam::Adam(std::size_t weights)
    : m_state{0, std::vector<float>(weights), std::vector<float>(weights)}
{
}

void Adam::move(std::span<float> weights, std::span<std::vector<float>> gradients, std::size_t from, std::size_t to,
                float factor, float rate)
{
    constexpr float leastRoot = 1e-8F;
    const auto steps = static_cast<float>(m_state.steps);
    const float meanScale = 1.0F / (1.0F - std::pow(meanDecay, steps)); // the means begin at zero
    const float squareScale = 1.0F / (1.0F - std::pow(squareDecay, steps));
    for (std::size_t i = from; i < to; ++i) {
        float gradient = 0;
        for (std::vector<float> &part : gradients) {
            gradient += part[i];
            part[i] = 0;
        }
        gradient *= factor;
        m_state.means[i] += (1.0F - meanDecay) * (gradient - m_state.means[i]);
        m_state.squares[i] += (1.0F - squareDecay) * (gradient * gradient - m_state.squares[i]);
        weights[i] -= rate * m_state.means[i] * meanScale / (std::sqrt(m_state.squares[i] * squareScale) + leastRoot);
    }
}

} // namespace lumora::training
