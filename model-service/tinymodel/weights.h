// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "matrix.h"
#include "vocabulary.h"

#include <cstdint>
#include <vector>

namespace lumora::tinymodel {

/// Whether the model begins its replies with a call of a tool.
enum class Calls {
    never,
    once, ///< and not again once it has called
    always,
};

struct Behaviour
{
    Calls calls = Calls::never;
    bool ends = true; ///< its replies, now and then, of its own accord
};

struct Shape
{
    std::int64_t width = 96;
    std::int64_t layers = 2;
    std::int64_t heads = 3;
    std::int64_t keyHeads = 3;
    std::int64_t hidden = 128;
    bool grid = false; ///< each token of an image has a row and a column, instead of a position of its own
    std::int64_t headSize() const { return width / heads; }
};

/// Weights of the llama architecture (or of qwen2vl, its like with a grid), random where nothing is said below, the
/// same in every run. One dimension of the width is constant, one each says of which kind a token is, and the output's
/// rows hold how likely each token is after each kind; the rest is noise, from the tokens before, that makes texts
/// differ. One attention head looks for a call.
std::vector<Matrix> talkingWeights(const Shape &shape, const Vocabulary &vocabulary, Behaviour behaviour);

/// Random weights only, for measuring speed: every token is about as likely.
std::vector<Matrix> randomWeights(const Shape &shape, const Vocabulary &vocabulary);

} // namespace lumora::tinymodel
