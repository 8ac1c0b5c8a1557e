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
    ReadResult file = readWholeFile(*path);
    if (file.status == ReadStatus::missing)
        return;
    std::optional<QList<ImportedDocument>> documents;
    if (file.status == ReadStatus::read)
        documents = decodeDocuments(std::move(file.bytes));
    if (documents)
        m_documents = std::move(*documents);
    else
        m_listFile = ListFile::unreadable;
}

void DocumentLibrary::save()
{
    const std::optional<QString> path = listFilePath();
    if (!path)
        return;
    if (m_listFile == ListFile::unreadable) {
        if (setFileAside(*path))
            return;
        m_listFile = ListFile::sound;
    }
    // A failure is dropped: the list in memory is whole, and the next save writes it again.
    static_cast<void>(replaceFile(*path, encodeDocuments(m_documents)));
}

} // namespace lumora
