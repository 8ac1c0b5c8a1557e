// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// Whether the file begins with the GGUF magic.
bool beginsLikeModel(const QString &path);

enum class GgufKind {
    model,
    projector, ///< what lets a model read images
};

/// What the file is: what its head says, and where that says nothing, as in one that is still being written, what its
/// name does. Reads no more than the first few kilobytes.
GgufKind ggufKind(const QString &path);

} // namespace lumora
