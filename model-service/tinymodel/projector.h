// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "matrix.h"

#include <gguf.h>

#include <vector>

namespace lumora::tinymodel {

enum class ProjectorKind {
    quarters, ///< shows a model the quarters of an image, and then the whole; each token takes a position
    grid,     ///< shows it the whole image, as large as it is; each token has a row and a column
};

/// What libmtmd has to know of a tiny projector. width: of the model that it belongs to.
void describeProjector(gguf_context *file, ProjectorKind kind, std::int64_t width);

/// Random weights, such that other pixels make other numbers.
std::vector<Matrix> projectorWeights(ProjectorKind kind, std::int64_t width);

} // namespace lumora::tinymodel
