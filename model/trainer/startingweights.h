// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/shape.h"

#include <cstdint>
#include <vector>

namespace lumora::training {

/// Weights to begin a training with: random ones, into which are set heads that know the token before, and heads that
/// find where the text at hand stood before and copy what followed there. docs/starting-weights.md explains them.
/// Throws std::invalid_argument where the shape has no room for them.
std::vector<float> startingWeights(const Shape &shape, std::uint32_t seed);

} // namespace lumora::training
