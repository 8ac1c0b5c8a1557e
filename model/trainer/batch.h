// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/chatvocabulary.h"

#include <vector>

namespace lumora::training {

using service::Token;

/// A run of tokens among those of a batch. Each sees itself and the ones before it in the segment, and all of the
/// prefix, a segment that stands earlier in the batch and has no prefix of its own. So many conversations share one
/// system's message, which is computed once.
struct Segment
{
    int begin = 0;
    int size = 0;
    int prefixBegin = 0;
    int prefixSize = 0; ///< 0 = none
};

/// The token that is to follow the one at a place.
struct Target
{
    int place = 0;
    Token token = 0;
    float weight = 1.0F; ///< in the sum of the losses
};

/// Conversations one behind the other, without padding.
struct Batch
{
    std::vector<Token> tokens;
    std::vector<int> positions; ///< of each token in its conversation
    std::vector<Segment> segments;
    std::vector<Target> targets; ///< in the order of their places

    int size() const { return static_cast<int>(tokens.size()); }
};

} // namespace lumora::training
