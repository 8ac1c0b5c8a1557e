// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/shape.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::training {

/// A part of the training, up to a number of tokens.
struct Phase
{
    std::int64_t untilTokens = 0; ///< of the whole training; 0: to the end
    std::string examples;         ///< the command that writes them; "{seed}" in it stands for a number
    double copyShare = 0;         ///< of the tokens, for exercises in copying
    int longestPassage = 2000;    ///< tokens; longer ones are left out
    int tokensPerStep = 4800;     ///< after which the weights are moved
};

/// What a training is like, read from a file of JSON.
struct Configuration
{
    Shape shape;
    int threads = 2;
    double learningRate = 1e-3;
    int warmUpSteps = 50;       ///< over which the rate grows to its height
    double constantShare = 0.4; ///< of the time, after which the rate falls in a line
    double lastRateShare = 0.02;
    std::vector<Phase> phases;
    std::string heldOutExamples; ///< the command that writes the ones that scores are taken on
    double heldOutMinutes = 10;  ///< between two looks at them
    std::uint32_t seed = 1;

    const Phase &phaseAt(std::int64_t tokens) const;

    /// progress: from 0 to 1.
    double rateAt(double progress, std::int64_t step) const;
};

/// Throws std::runtime_error where the text is no configuration.
Configuration readConfiguration(std::string_view json);

} // namespace lumora::training
