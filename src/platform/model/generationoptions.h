// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <optional>

namespace lumora {

/// How a reply is sampled. What is unset is the model's own default.
struct GenerationOptions
{
    enum class SamplingMode {
        greedy,
        random,
    };

    std::optional<SamplingMode> samplingMode;
    std::optional<double> temperature;
    std::optional<qint64> maximumResponseTokens;

    bool operator==(const GenerationOptions &) const = default;
};

} // namespace lumora
