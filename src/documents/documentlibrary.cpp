// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"

#include "documents/listfile.h"
#include "platform/files/filestore.h"
#include "platform/files/identifier.h"
#include "platform/files/storagelocation.h"

#include <QFile>
#include <QFileInfo>
#include <QtConcurrentRun>

namespace lumora {

DocumentLibrary::DocumentLibrary(std::optional<QString> applicationSupport, PdfTextReader pdf, QObject *parent)
    : QObject(parent)
    , m_applicationSupport(std::move(applicationSupport))
    , m_pdf(std::move(pdf))
{
    if (const std::optional<QString> folder = storageFolder(m_applicationSupport))
        m_index = std::make_shared<SearchIndex>(*folder + QStringLiteral("/SearchIndex.sqlite"));
    m_worker.setMaxThreadCount(1);
    connect(&m_import, &QFutureWatcherBase::finished, this, &DocumentLibrary::endImport);
    load();
}

DocumentLibrary::~DocumentLibrary()
{
    m_stop.request_stop();
    if (m_index)
        m_index->close();
    m_import.waitForFinished();
    if (m_isImporting && m_import.result().result == DocumentImport::Result::imported)
        append(m_importing);
}

QString DocumentLibrary::domain()
{
    return QStringLiteral("org.lumora.Lumora.documents");
}

std::optional<QString> DocumentLibrary::storageDirectory() const
{
    const std::optional<QString> folder = storageFolder(m_applicationSupport);
    return folder ? std::optional(*folder + QStringLiteral("/Documents")) : std::nullopt;
}

std::optional<QString> DocumentLibrary::listFilePath() const
{
    const std::optional<QString> folder = storageDirectory();
    return folder ? std::optional(*folder + QStringLiteral("/documents.json")) : std::nullopt;
}

void DocumentLibrary::load()
{
    const std::optional<QString> path = listFilePath();
    if (!path)
        return;
    std::optional<QByteArray> bytes = readWholeFile(*path);
    if (!bytes)
        return;
    std::optional<QList<ImportedDocument>> documents = decodeDocuments(std::move(*bytes));
    if (!documents)
        return;
    m_documents = std::move(*documents);
    m_listFile = ListFile::ours;
}

void DocumentLibrary::add(const QUrl &location)
{
    if (!m_index) {
        setErrorMessage(tr("Document storage is unavailable."));
        return;
    }
    if (!location.isLocalFile()) {
        setErrorMessage(tr("Could not import document: ") +
                        tr("The document is not on this computer. Copy it here, and add the copy."));
        return;
    }
    m_waiting.append(location);
    if (!m_isImporting)
        startNextImport();
}

void DocumentLibrary::startNextImport()
{
    setImporting(!m_waiting.isEmpty());
    if (!m_isImporting)
        return;
    const QString picked = m_waiting.takeFirst().toLocalFile();
    m_importing = ImportedDocument{.name = QFileInfo(picked).fileName(), .filename = freshFileName(picked)};
    const DocumentImport import{.picked = picked,
                                .folder = storageDirectory().value_or(QString()),
                                .document = m_importing,
                                .pdf = m_pdf,
                                .index = m_index,
                                .domain = domain(),
                                .stop = m_stop.get_token()};
    m_import.setFuture(QtConcurrent::run(&m_worker, &DocumentImport::run, import));
}

void DocumentLibrary::endImport()
{
    const DocumentImport::Outcome outcome = m_import.result();
    switch (outcome.result) {
    case DocumentImport::Result::imported:
        append(m_importing);
        setErrorMessage(QString());
        break;
    case DocumentImport::Result::noText:
        setErrorMessage(tr("No readable text was found in this document. Scanned PDFs need OCR first."));
        break;
    case DocumentImport::Result::failed:
        setErrorMessage(tr("Could not import document: ") + outcome.failure.description);
        break;
    case DocumentImport::Result::stopped:
        break;
    }
    startNextImport();
}

void DocumentLibrary::append(const ImportedDocument &document)
{
    m_documents.append(document);
    save();
    Q_EMIT documentsChanged();
}

void DocumentLibrary::remove(const ImportedDocument &document)
{
    const ImportedDocument removed = document; // it may be the one in the list
    m_documents.removeIf([&removed](const ImportedDocument &each) { return each.id == removed.id; });
    save(); // first: whatever happens now, the list names no document that is not there
    if (const std::optional<QString> folder = storageDirectory())
        QFile::remove(*folder + u'/' + removed.filename);
    if (m_index)
        m_index->deleteSearchableItems({identifierText(removed.id)});
    Q_EMIT documentsChanged();
}

void DocumentLibrary::setErrorMessage(const QString &message)
{
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void DocumentLibrary::setImporting(bool isImporting)
{
    if (m_isImporting == isImporting)
        return;
    m_isImporting = isImporting;
    Q_EMIT isImportingChanged();
}

void DocumentLibrary::save()
{
    const std::optional<QString> path = listFilePath();
    if (!path)
        return;
    if (m_listFile == ListFile::unknown && setFileAside(*path))
        return;
    // A failure is dropped: the list in memory is whole, and the next save writes it again.
    if (!replaceFile(*path, encodeDocuments(m_documents)))
        m_listFile = ListFile::ours;
}

} // namespace lumora
