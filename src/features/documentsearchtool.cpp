// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/documentsearchtool.h"

#include "documents/documentlibrary.h"
#include "documents/extracttext.h"
#include "features/excerpt.h"
#include "platform/files/identifier.h"
#include "platform/model/errors.h"
#include "platform/search/userquery.h"
#include "platform/text/textsearch.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace lumora {

namespace {

constexpr qsizetype mostIndexResults = 8;
constexpr qsizetype mostResults = 3;

QString result(const QString &title, const QString &text, const QString &query, const std::stop_token &stop)
{
    return QStringLiteral("Document: ") + title + QStringLiteral("\nExcerpt: ") + excerpt(text, query, stop);
}

/// What the index finds among these documents, best first.
QStringList searchIndex(const DocumentSearchTool &tool, const QString &query, const std::stop_token &stop)
{
    QSet<QString> knownIDs;
    for (const ImportedDocument &document : tool.documents)
        knownIDs.insert(identifierText(document.id));

    UserQuery items(tool.index, query,
                    {.fetchAttributes = {QStringLiteral("title"), QStringLiteral("textContent")},
                     .maxResultCount = mostIndexResults});
    QStringList results;
    while (results.size() < mostResults && !stop.stop_requested()) {
        const std::optional<SearchableItem> item = items.next();
        if (!item)
            break;
        if (!knownIDs.contains(item->uniqueIdentifier))
            continue;
        const QString title = item->title.isNull() ? QStringLiteral("Document") : item->title;
        results.append(result(title, item->textContent, query, stop));
    }
    return results;
}

/// Whether a text holds one of these folded words. Once stop is requested, either answer.
bool holdsAny(const QList<QStringView> &terms, QStringView text, const std::stop_token &stop)
{
    while (!text.isEmpty() && !stop.stop_requested()) {
        const QStringView piece = firstPiece(text);
        text = text.sliced(piece.size());
        const QString folded = caseFolded(piece);
        if (std::ranges::any_of(terms, [&folded](QStringView term) { return folded.contains(term); }))
            return true;
    }
    return false;
}

/// Reads the stored copies, in the order of the list.
QStringList scanDocuments(const DocumentSearchTool &tool, const QString &query, const std::stop_token &stop)
{
    const QString folded = caseFolded(query);
    const QList<QStringView> terms = words(folded);
    QStringList results;
    for (const ImportedDocument &document : tool.documents) {
        if (terms.isEmpty() || results.size() == mostResults || stop.stop_requested())
            break;
        // A file that is missing or that is no text counts as empty; its name may match all the same.
        const QString text = extractText(tool.directory + u'/' + document.filename, tool.pdf, stop).text;
        if (holdsAny(terms, document.name, stop) || holdsAny(terms, text, stop))
            results.append(result(document.name, text, query, stop));
    }
    return results;
}

} // namespace

QString DocumentSearchTool::call(const Arguments &arguments, const std::stop_token &stop) const
{
    QStringList results;
    try {
        results = searchIndex(*this, arguments.text, stop);
    } catch (const SearchError &error) {
        throw ModelError(error.description());
    }
    if (results.isEmpty())
        results = scanDocuments(*this, arguments.text, stop);
    if (results.isEmpty())
        return QStringLiteral("No matching imported documents were found.");
    return results.join(QStringLiteral("\n\n"));
}

std::optional<DocumentSearchTool> searchTool(const DocumentLibrary &library)
{
    const std::optional<QString> directory = library.storageDirectory();
    if (!directory || library.documents().isEmpty())
        return std::nullopt;
    return DocumentSearchTool{
        .name = QStringLiteral("searchDocuments"),
        .description = QStringLiteral("Search the user's imported local documents for relevant information. Use this "
                                      "to answer questions about a document."),
        .documents = library.documents(),
        .directory = *directory,
        .index = library.index(),
        .pdf = library.pdf(),
    };
}

} // namespace lumora
