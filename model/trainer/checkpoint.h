// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/adam.h"
#include "trainer/shape.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora::training {

/// All that a training needs to go on as if it had not stopped.
struct Checkpoint
{
    std::vector<float> weights;
    Adam::State optimiser;
    std::int64_t tokens = 0;     ///< computed so far
    std::int64_t supervised = 0; ///< of these, what the model was to write
    double seconds = 0;          ///< of training so far
};

/// Throws std::runtime_error; then a file that was there is as it was.
void writeCheckpoint(const Checkpoint &checkpoint, const Shape &shape, const std::string &path);

/// Nothing where there is no file. Throws std::runtime_error where it is none of this shape.
std::optional<Checkpoint> readCheckpoint(const std::string &path, const Shape &shape);

} // namespace lumora::training
