// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"
#include "platform/model/textargument.h"
#include "platform/pdf/pdftextreader.h"
#include "platform/search/searchindex.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace lumora {

class DocumentLibrary;

/// Finds what the imported documents say. Asks the search index, and reads the stored copies where it knows nothing.
/// Works on the list as it was when the tool was made; never touches the library.
struct DocumentSearchTool
{
    QString name;
    QString description;
    QList<ImportedDocument> documents;
    QString directory; ///< absolute, of the stored copies
    std::shared_ptr<SearchIndex> index;
    PdfTextReader pdf;

    static constexpr TextProperty query{u"query", u"A short search phrase with the important names and concepts"};
    using Arguments = TextArgument<query>;

    /// Up to three titles with excerpts, or a sentence that says that nothing was found. Runs on a worker thread; stop
    /// ends the reading of stored copies. Throws ModelError where the index cannot be read.
    QString call(const Arguments &arguments, const std::stop_token &stop) const;
};

/// The tool for the library as it stands; none where it has no folder or no documents. Main thread.
std::optional<DocumentSearchTool> searchTool(const DocumentLibrary &library);

} // namespace lumora
