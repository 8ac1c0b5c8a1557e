// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/matrix.h"

#include <span>
#include <vector>

namespace lumora::training {

/// output = each row of input, divided by its root mean square and times the gains. scales: what each row was
/// multiplied with.
void normalise(ConstMatrix input, std::span<const float> gains, float epsilon, Matrix output, std::span<float> scales);

/// Adds to the gradients of input and gains, from that of output.
void normaliseBackward(ConstMatrix input, std::span<const float> gains, std::span<const float> scales,
                       ConstMatrix outputGradient, Matrix inputGradient, std::span<float> gainGradients);

/// The angles by which pairs of a head's numbers are turned at each position. The slowest pair is the last.
class Rotations
{
public:
    Rotations(int headSize, int positions, float base);

    enum class Direction {
        forward,
        back,
    };

    /// Turns each head in each row, in place. rows: a whole number of heads wide; positions: one for each row.
    void turn(Matrix rows, std::span<const int> positions, Direction direction) const;

private:
    int m_headSize;
    std::vector<float> m_cosines; // of each position, one for each pair
    std::vector<float> m_sines;
};

/// output = silu(gate) · up. gateUp: in each row the gates, then as many others.
void gate(ConstMatrix gateUp, Matrix output);

/// gateUpGradient: replaced.
void gateBackward(ConstMatrix gateUp, ConstMatrix outputGradient, Matrix gateUpGradient);

/// Replaces each number by e to the power of it minus the shift; their sum. Exact to a few units in the last place.
float exponentials(std::span<float> numbers, float shift);

float largest(std::span<const float> numbers);

} // namespace lumora::training
