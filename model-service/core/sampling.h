// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/messages.h"

#include <cstdint>
#include <optional>

namespace lumora::service {

/// What a model file says about how it wants to be sampled.
struct SamplingDefaults
{
    std::optional<double> temperature;
    std::optional<std::int32_t> topK;
    std::optional<double> topP;
    std::optional<double> minP;
    std::optional<double> xtcProbability;
    std::optional<double> xtcThreshold;
    std::optional<std::int32_t> penaltyLastTokens;
    std::optional<double> penaltyRepeat;
};

/// How a reply is sampled.
struct SamplingSettings
{
    bool greedy = false; ///< the most likely token, always; nothing below matters then
    double temperature = 0.8;
    std::int32_t topK = 40; ///< 0 = off
    double topP = 0.95;     ///< 1 = off
    double minP = 0.05;     ///< 0 = off
    double xtcProbability = 0.0;
    double xtcThreshold = 0.1;
    std::int32_t penaltyLastTokens = 64;
    double penaltyRepeat = 1.0; ///< 1 = off

    bool operator==(const SamplingSettings &) const = default;
};

/// The request's options where they are set, else the model's own defaults where it has any, else ours.
SamplingSettings samplingSettings(const SamplingDefaults &defaults, const wire::Options &options);

} // namespace lumora::service
