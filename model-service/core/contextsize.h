// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <optional>

namespace lumora::service {

struct ContextNeeds
{
    std::int64_t trainedTokens = 0;              ///< the context that the model file names
    std::optional<std::int64_t> requestedTokens; ///< a limit that the request sets
    std::int64_t bytesPerToken = 0;              ///< that the kept state takes
    std::int64_t freeBytes = 0;                  ///< memory to be had once the model's weights are in it
};

/// A context below this is of no use for a conversation.
constexpr std::int64_t smallestContext = 512;

/// Tokens: what the file and the request say, as far as it takes no more than a quarter of the free memory, so that the
/// rest of the machine goes on. Nothing where memory, and not the file or the request, forces it below smallestContext.
std::optional<std::int64_t> chooseContextSize(const ContextNeeds &needs);

/// How a model is tried to be run.
struct Attempt
{
    bool usesGraphics = false;
    std::int64_t contextSize = 0; ///< tokens

    bool operator==(const Attempt &) const = default;
};

/// What to try once an attempt has found too little memory: the same without the graphics card, and then half of the
/// context, as long as that is of use. Nothing where all was tried.
std::optional<Attempt> nextAttempt(const Attempt &failed);

} // namespace lumora::service
