// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/sampling.h"

#include <algorithm>

namespace lumora::service {

SamplingSettings samplingSettings(const SamplingDefaults &defaults, const wire::Options &options)
{
    const SamplingSettings ours;
    SamplingSettings settings;
    settings.temperature = options.temperature.value_or(defaults.temperature.value_or(ours.temperature));
    settings.topK = std::max(defaults.topK.value_or(ours.topK), 0);
    settings.topP = std::clamp(defaults.topP.value_or(ours.topP), 0.0, 1.0);
    settings.minP = std::clamp(defaults.minP.value_or(ours.minP), 0.0, 1.0);
    settings.xtcProbability = std::clamp(defaults.xtcProbability.value_or(ours.xtcProbability), 0.0, 1.0);
    settings.xtcThreshold = std::clamp(defaults.xtcThreshold.value_or(ours.xtcThreshold), 0.0, 1.0);
    settings.penaltyLastTokens = std::clamp(defaults.penaltyLastTokens.value_or(ours.penaltyLastTokens), 0, 4096);
    const double penalty = defaults.penaltyRepeat.value_or(ours.penaltyRepeat);
    settings.penaltyRepeat = penalty > 0 ? penalty : ours.penaltyRepeat;

    // Written so that a temperature that is not a number is greedy, too.
    settings.greedy = !(settings.temperature > 0);
    if (options.sampling == wire::Sampling::greedy)
        settings.greedy = true;
    if (options.sampling == wire::Sampling::random && settings.greedy) {
        settings.greedy = false;
        settings.temperature = ours.temperature;
    }
    return settings;
}

} // namespace lumora::service
