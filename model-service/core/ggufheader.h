// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumora::service {

/// What the head of a model file says, before an engine is let near it.
struct GgufHeader
{
    std::string architecture; ///< empty where the file names none
    std::uint64_t splitCount = 1;
    std::uint64_t tensorCount = 0;
    std::int64_t fileSize = 0; ///< bytes
};

/// Reads the head of a GGUF file of version 2 or 3 and checks that every length and offset in it lies inside the file.
/// Throws Failure, badFile: not a regular file, not to be read, not GGUF, cut short, or broken. Never waits on a file
/// that is none, such as a pipe.
GgufHeader readGgufHeader(const std::string &path);

/// Throws Failure, badFile, where the file is sound but is not a whole language model: a part of a split one, one
/// without tensors, or the image part of another model.
void requireLanguageModel(const GgufHeader &header, const std::string &path);

} // namespace lumora::service
