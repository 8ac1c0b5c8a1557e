// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace lumora::training {

/// Random numbers that are the same ones each time for the same seed.
class RandomNumbers
{
public:
    explicit RandomNumbers(std::uint32_t seed)
        : m_random(seed)
    {
    }

    /// Normally distributed around zero.
    float normal(float size) { return size * m_normal(m_random); }

    /// Rows of length one, each orthogonal to the ones before; at most as many as columns.
    std::vector<float> orthogonalRows(int rows, int columns);

private:
    std::mt19937 m_random;
    std::normal_distribution<float> m_normal;
};

} // namespace lumora::training
