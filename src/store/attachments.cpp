// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"
#include "store/chatstore.h"

#include <QFile>
#include <QFileInfo>

namespace lumora {

std::optional<QString> ChatStore::imagesDirectoryURL() const
{
    const std::optional<QString> history = conversationsFileURL();
    return history ? std::optional(QFileInfo(*history).path() + QStringLiteral("/Images")) : std::nullopt;
}

std::optional<QString> ChatStore::imageURL(const QString &filename) const
{
    const std::optional<QString> folder = imagesDirectoryURL();
    return folder ? std::optional(*folder + u'/' + filename) : std::nullopt;
}

void ChatStore::attachImage(const QUrl &location)
{
    const std::optional<QString> folder = imagesDirectoryURL();
    if (!folder) {
        setErrorMessage(tr("Could not find local image storage."));
        return;
    }
    if (!location.isLocalFile()) {
        setErrorMessage(tr("Could not attach image: ") +
                        tr("The image is not on this computer. Copy it here, and attach the copy."));
        return;
    }
    const QString picked = location.toLocalFile();
    const QString copy = *folder + u'/' + freshFileName(picked);
    FileOutcome failed = createFolder(*folder);
    if (!failed)
        failed = copyFile(picked, copy);
    if (failed) {
        setErrorMessage(tr("Could not attach image: ") + failed->description);
        return;
    }
    removePendingImage();
    setPendingImageURL(copy);
    setErrorMessage(QString());
}

void ChatStore::removePendingImage()
{
    if (m_pendingImageURL)
        QFile::remove(*m_pendingImageURL);
    setPendingImageURL(std::nullopt);
}

} // namespace lumora
