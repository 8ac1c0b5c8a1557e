// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/shape.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// Weights to begin a training with: random ones, into which are set heads that know the token before, heads that find
/// where the text at hand stood before and copy what followed there, and one that knows how the sentence at hand began.
/// docs/starting-weights.md explains them. texts: of the tokens, as a vocabulary has them. Throws std::invalid_argument
/// where the shape has no room for them, or another number of tokens.
std::vector<float> startingWeights(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed);

} // namespace lumora::training
