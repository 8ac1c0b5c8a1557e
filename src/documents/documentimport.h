// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"
#include "platform/files/filestore.h"
#include "platform/pdf/pdftextreader.h"
#include "platform/search/searchindex.h"

#include <QString>

#include <memory>
#include <stop_token>

namespace lumora {

/// The part of an import that takes its time. It runs on a worker thread, on copies of what it needs.
struct DocumentImport
{
    QString picked; ///< absolute path of the file that the user chose
    QString folder; ///< where the stored copy goes; created with its parents where it is missing
    ImportedDocument document;
    PdfTextReader pdf;
    std::shared_ptr<SearchIndex> index;
    QString domain; ///< of the item in the index
    std::stop_token stop;

    enum class Result {
        imported,
        noText,  ///< nothing to read in it; the copy has been removed
        failed,  ///< a copy that had been made stays
        stopped, ///< nothing is left of it
    };
    struct Outcome
    {
        Result result = Result::imported;
        FileFailure failure; ///< where it failed
    };

    /// Copies the picked file, reads the copy and gives its text to the index. Blocks.
    Outcome run() const;

private:
    Outcome copyAndIndex() const;
    Outcome indexCopy(const QString &copy) const;
};

/// What the index is given of a document: the beginning of its text.
SearchableItem searchableItem(const ImportedDocument &document, const QString &domain, const QString &text);

} // namespace lumora
