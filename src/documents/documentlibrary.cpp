// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"

#include "documents/listfile.h"
#include "platform/files/filestore.h"
#include "platform/files/storagelocation.h"

namespace lumora {

DocumentLibrary::DocumentLibrary(std::optional<QString> applicationSupport, QObject *parent)
    : QObject(parent)
    , m_applicationSupport(std::move(applicationSupport))
{
    load();
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
