// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/indexrepair.h"

#include "documents/documentimport.h"
#include "documents/extracttext.h"
#include "platform/files/identifier.h"
#include "platform/text/textrules.h"

#include <optional>
#include <utility>

namespace lumora {

IndexRepair::IndexRepair(std::shared_ptr<SearchIndex> index, QString domain, PdfTextReader pdf)
    : m_index(std::move(index))
    , m_domain(std::move(domain))
    , m_pdf(std::move(pdf))
{
    m_worker.setMaxThreadCount(1);
}

IndexRepair::~IndexRepair()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

void IndexRepair::start(const QList<ImportedDocument> &documents, const QString &folder)
{
    m_worker.start([this, documents, folder] { store(documents, folder); });
}

void IndexRepair::leaveOut(const QUuid &id)
{
    const std::lock_guard lock(m_lock);
    m_leftOut.insert(id);
}

bool IndexRepair::isLeftOut(const QUuid &id)
{
    const std::lock_guard lock(m_lock);
    return m_leftOut.contains(id);
}

void IndexRepair::store(const QList<ImportedDocument> &documents, const QString &folder)
{
    if (m_stop.stop_requested())
        return;
    try {
        const QSet<QString> stored = m_index->identifiers();
        for (const ImportedDocument &document : documents) {
            if (stored.contains(identifierText(document.id)) || isLeftOut(document.id))
                continue;
            if (m_stop.stop_requested() || !storeOne(document, folder + u'/' + document.filename))
                return;
        }
    } catch (const SearchError &) {
        // Who asks the index next is told.
    }
}

bool IndexRepair::storeOne(const ImportedDocument &document, const QString &copy)
{
    const ExtractedText extracted = extractText(copy, m_pdf, m_stop.get_token());
    if (m_stop.stop_requested())
        return false;
    if (trimmed(extracted.text).isEmpty()) {
        leaveOut(document.id);
        return true;
    }
    std::optional<QFuture<SearchIndex::Outcome>> change;
    {
        // The change is asked for before that of a removal, or not at all.
        const std::lock_guard lock(m_lock);
        if (!m_leftOut.contains(document.id))
            change =
                m_index->indexSearchableItems({searchableItem(document, m_domain, extracted.text)}, m_stop.get_token());
    }
    return !change || !change->result();
}

} // namespace lumora
