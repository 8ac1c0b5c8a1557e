// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentimport.h"

#include "documents/extracttext.h"
#include "platform/files/identifier.h"
#include "platform/text/graphemes.h"
#include "platform/text/textrules.h"

#include <QCoreApplication>
#include <QFile>

#include <new>

namespace lumora {

namespace {

using Result = DocumentImport::Result;

constexpr qsizetype indexedLength = 120'000;
constexpr qsizetype descriptionLength = 600;

} // namespace

DocumentImport::Outcome DocumentImport::run() const
{
    try {
        return copyAndIndex();
    } catch (const std::bad_alloc &) {
        return {Result::failed,
                {QCoreApplication::translate("lumora::Documents",
                                             "There is too little memory to read the document. Close other programs "
                                             "and add it again.")}};
    }
}

DocumentImport::Outcome DocumentImport::copyAndIndex() const
{
    const QString copy = folder + u'/' + document.filename;
    if (isTooLarge(picked, pdf)) // copying it first could fill the disk
        return {Result::noText, {}};
    FileOutcome failed = refuseTooLong(picked);
    if (!failed)
        failed = createFolder(folder);
    if (!failed)
        failed = copyFile(picked, copy, stop);
    if (failed)
        return {stop.stop_requested() ? Result::stopped : Result::failed, *failed};
    Outcome outcome = indexCopy(copy);
    if (outcome.result != Result::imported && stop.stop_requested())
        outcome.result = Result::stopped;
    if (outcome.result == Result::noText || outcome.result == Result::stopped)
        QFile::remove(copy);
    return outcome;
}

DocumentImport::Outcome DocumentImport::indexCopy(const QString &copy) const
{
    const ExtractedText extracted = extractText(copy, pdf, stop);
    if (extracted.failure)
        return {Result::failed, *extracted.failure};
    if (trimmed(extracted.text).isEmpty() || stop.stop_requested())
        return {Result::noText, {}};
    const SearchableItem item = searchableItem(document, domain, extracted.text);
    if (const auto notIndexed = index->indexSearchableItems({item}, stop).result())
        return {Result::failed, {notIndexed->description}};
    return {};
}

SearchableItem searchableItem(const ImportedDocument &document, const QString &domain, const QString &text)
{
    return {
        .uniqueIdentifier = identifierText(document.id),
        .domainIdentifier = domain,
        .title = document.name,
        .textContent = firstCharactersBounded(text, indexedLength).toString(),
        .contentDescription = firstCharactersBounded(text, descriptionLength).toString(),
    };
}

} // namespace lumora
