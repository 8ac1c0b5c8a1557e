// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <chrono>
#include <stop_token>

namespace lumora {

/// What reading one PDF may cost. A file that asks for more counts as one that cannot be opened.
struct PdfLimits
{
    std::chrono::milliseconds time = std::chrono::seconds(60); ///< from the call to its return
    qint64 memoryBytes = qint64(1) << 30;                      ///< of the helper; no larger file is read either
    qint64 textBytes = qint64(64) << 20;                       ///< as UTF-8
};

/// Reads the text of PDF files with the helper program lumora-pdf-text. A value; any thread, several at once.
struct PdfTextReader
{
    QString helper; ///< the program's absolute path
    PdfLimits limits;

    /// The text of all pages in reading order, with a blank line between two pages; without NULs. Whatever the file's
    /// name is. Empty where the file cannot be opened, is locked, has no text layer or exceeds a limit, where the
    /// helper fails on it, which is logged, and where stop was requested. Blocks until then; the helper is gone when it
    /// returns. Throws HelperError where no file can be read.
    QString text(const QString &path, const std::stop_token &stop = {}) const;
};

} // namespace lumora
