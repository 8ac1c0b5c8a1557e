// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"
#include "platform/pdf/pdftextreader.h"
#include "platform/search/searchindex.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QThreadPool>

#include <memory>
#include <mutex>
#include <stop_token>

namespace lumora {

/// Stores documents in the search index again that it has lost, as where it was damaged and is empty now. It reads
/// their stored copies in the background, one after another in their order. Used on the main thread.
class IndexRepair
{
public:
    IndexRepair(std::shared_ptr<SearchIndex> index, QString domain, PdfTextReader pdf);
    /// Gives up what is under way.
    ~IndexRepair();
    Q_DISABLE_COPY_MOVE(IndexRepair)

    /// Stores those of the documents that the index does not have, after what was asked for before.
    void start(const QList<ImportedDocument> &documents, const QString &folder);

    /// The document is not to be stored any more. Before its item is deleted, so that none is left.
    void leaveOut(const QUuid &id);

private:
    void store(const QList<ImportedDocument> &documents, const QString &folder);
    bool isLeftOut(const QUuid &id);
    /// False where the index takes no more.
    bool storeOne(const ImportedDocument &document, const QString &copy);

    const std::shared_ptr<SearchIndex> m_index;
    const QString m_domain;
    const PdfTextReader m_pdf;
    std::mutex m_lock;
    QSet<QUuid> m_leftOut; ///< removed, or nothing to read in them any more
    std::stop_source m_stop;
    QThreadPool m_worker; ///< its own: to read everything again may take long
};

} // namespace lumora
