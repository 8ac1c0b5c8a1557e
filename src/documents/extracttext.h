// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/filestore.h"
#include "platform/pdf/pdftextreader.h"

#include <QString>

#include <stop_token>

namespace lumora {

/// The text of a document, or why it cannot be read.
struct ExtractedText
{
    QString text;
    FileOutcome failure;
};

/// Whether it is a PDF that the reader would refuse by its size alone.
bool isTooLarge(const QString &path, const PdfTextReader &pdf);

/// Refuses a text of more than 64 MB, some ten thousand pages, by its size alone. PDFs have other limits.
FileOutcome refuseTooLong(const QString &path);

/// The whole text of a stored copy. A PDF, told by its extension in any case, gives an empty text and no failure where
/// it cannot be opened, has no text, or was stopped; it fails only where this program cannot read any PDF. Everything
/// else must be UTF-8; a byte order mark is no part of the text. Blocks; any thread.
ExtractedText extractText(const QString &path, const PdfTextReader &pdf, const std::stop_token &stop = {});

} // namespace lumora
