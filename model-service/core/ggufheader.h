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
    std::string architecture;      ///< empty where the file names none
    std::uint64_t splitCount = 1;  ///< files that the model was split into
    std::uint64_t splitNumber = 0; ///< of this one among them
    std::uint64_t tensorCount = 0;
    std::int64_t fileSize = 0; ///< bytes; of a split model, of all of its files
};

/// Reads the head of a GGUF file of version 2 or 3 and checks that every length and offset in it lies inside the file.
/// Throws Failure, badFile: not a regular file, not to be read, not GGUF, cut short, or broken. Never waits on a file
/// that is none, such as a pipe.
GgufHeader readGgufHeader(const std::string &path);

/// Reads the head of a language model's file or, of a split model, of its first file, and those of the others beside
/// it. Throws Failure, badFile, also where the files are sound but not a whole language model: another part than the
/// first, parts that are missing or not named as the engine looks for them, one without tensors, or the image part of
/// another model.
GgufHeader readModelHeader(const std::string &path);

} // namespace lumora::service
