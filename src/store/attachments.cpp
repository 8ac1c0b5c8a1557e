// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"
#include "platform/images/imagefile.h"
#include "store/chatstore.h"

#include <QFile>
#include <QFileInfo>

namespace lumora {

namespace {

FileOutcome refuseTooLarge(const QString &picked)
{
    constexpr qint64 megabyte = 1024 * 1024;
    if (QFileInfo(picked).size() <= imageLimits.fileBytes)
        return std::nullopt;
    return FileFailure{
        ChatStore::tr("The file has more than %1 MB. Choose a smaller image.").arg(imageLimits.fileBytes / megabyte)};
}

} // namespace

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
    if (!location.isLocalFile()) {
        setErrorMessage(tr("Could not attach image: ") +
                        tr("The image is not on this computer. Copy it here, and attach the copy."));
        return;
    }
    const QString picked = location.toLocalFile();
    attachImage(freshFileName(picked), [&picked](const QString &copy) {
        const FileOutcome tooLarge = refuseTooLarge(picked); // before a disk is filled with what cannot be shown
        return tooLarge ? tooLarge : copyFile(picked, copy);
    });
}

void ChatStore::attachPicture(const QByteArray &png)
{
    attachImage(freshFileName(QStringLiteral("picture.png")),
                [&png](const QString &file) { return replaceFile(file, png); });
}

template <typename Store>
void ChatStore::attachImage(const QString &name, Store store)
{
    const std::optional<QString> folder = imagesDirectoryURL();
    if (!folder) {
        setErrorMessage(tr("Could not find local image storage."));
        return;
    }
    FileOutcome failed = createFolder(*folder);
    if (!failed)
        failed = store(*folder + u'/' + name);
    if (failed) {
        setErrorMessage(tr("Could not attach image: ") + failed->description);
        return;
    }
    removePendingImage();
    setPendingImageURL(*folder + u'/' + name);
    setErrorMessage(QString());
}

void ChatStore::removePendingImage()
{
    if (m_pendingImageURL)
        QFile::remove(*m_pendingImageURL);
    setPendingImageURL(std::nullopt);
}

} // namespace lumora
