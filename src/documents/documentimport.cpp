// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentimport.h"

#include "documents/extracttext.h"
#include "platform/files/identifier.h"
#include "platform/text/graphemes.h"
#include "platform/text/textrules.h"

#include <QFile>

namespace lumora {

namespace {

using Result = DocumentImport::Result;

constexpr qsizetype indexedLength = 120'000;
constexpr qsizetype descriptionLength = 600;

} // namespace

DocumentImport::Outcome DocumentImport::run() const
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

    const ExtractedText extracted = extractText(copy, pdf, stop);
    if (!stop.stop_requested() && extracted.failure)
        return {Result::failed, *extracted.failure};
    if (stop.stop_requested() || trimmed(extracted.text).isEmpty()) {
        QFile::remove(copy);
        return {stop.stop_requested() ? Result::stopped : Result::noText, {}};
    }
    const auto notIndexed = index->indexSearchableItems({searchableItem(document, domain, extracted.text)}).result();
    if (notIndexed)
        return {Result::failed, {notIndexed->description}};
    return {};
}

SearchableItem searchableItem(const ImportedDocument &document, const QString &domain, const QString &text)
{
    return {
        .uniqueIdentifier = identifierText(document.id),
        .domainIdentifier = domain,
        .title = document.name,
        .textContent = firstCharacters(text, indexedLength).toString(),
        .contentDescription = firstCharacters(text, descriptionLength).toString(),
    };
}

} // namespace lumora
