// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/vision/reading.h"

#include <QString>

#include <chrono>
#include <stop_token>

namespace lumora {

/// Reads what stands in image files with the helper program lumora-image-reader, so that whatever a picture does to the
/// engines ends there. A value; any thread, several at once.
struct ImageReader
{
    QString helper;                                            ///< the program's absolute path
    std::chrono::milliseconds time = std::chrono::seconds(45); ///< from the call to its return, at most

    enum class Wanted {
        text,     ///< what is written, its lines and paragraphs kept
        barcodes, ///< a line for each code: its type, a colon, its content; one of several lines begins below
    };

    /// Blocks. Text is recognised in the installed languages, the user's first. Throws ModelError where the helper
    /// cannot be started. One that fails on an image counts as not being able to read it, which is logged.
    Reading read(const QString &imagePath, Wanted wanted, const std::stop_token &stop = {}) const;
};

} // namespace lumora
