// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/contextsize.h"

#include <algorithm>

namespace lumora::service {

namespace {

constexpr std::int64_t step = 256; // the engine rounds up to it

} // namespace

std::optional<std::int64_t> chooseContextSize(const ContextNeeds &needs)
{
    std::int64_t wanted = std::max<std::int64_t>(needs.trainedTokens, 1);
    if (needs.requestedTokens)
        wanted = std::clamp<std::int64_t>(*needs.requestedTokens, 1, wanted);
    if (needs.bytesPerToken <= 0)
        return wanted;
    const std::int64_t affordable = std::max<std::int64_t>(needs.freeBytes, 0) / 4 / needs.bytesPerToken;
    if (wanted <= affordable)
        return wanted;
    const std::int64_t bounded = affordable / step * step;
    return bounded < std::min(wanted, smallestContext) ? std::nullopt : std::optional(bounded);
}

std::optional<Attempt> nextAttempt(const Attempt &failed)
{
    if (failed.usesGraphics)
        return Attempt{false, failed.contextSize};
    if (failed.contextSize <= smallestContext)
        return std::nullopt;
    return Attempt{false, std::max(failed.contextSize / 2, smallestContext)};
}

} // namespace lumora::service
