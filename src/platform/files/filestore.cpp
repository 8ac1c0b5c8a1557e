// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("lumora::Files", text);
}

FileOutcome failure(const char *what, const QString &why)
{
    return FileFailure{translated(what).arg(why)};
}

FileOutcome syncFile(int handle, const char *what)
{
    if (::fsync(handle) == 0 || errno == EINVAL) // EINVAL: nothing that can be synced, such as a pipe
        return std::nullopt;
    return failure(what, qt_error_string(errno));
}

/// Makes a rename in this folder survive a power cut. Some file systems cannot sync a folder; the rename stands anyway.
void syncFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

} // namespace

ReadResult readWholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {QFileInfo::exists(path) ? ReadStatus::unreadable : ReadStatus::missing, {}};
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {ReadStatus::unreadable, {}};
    return {ReadStatus::read, std::move(bytes)};
}

FileOutcome createFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return std::nullopt;
    const QString parent = QFileInfo(path).path();
    if (parent != path) {
        if (FileOutcome failed = createFolder(parent))
            return failed;
    }
    constexpr mode_t ownerOnly = S_IRWXU;
    if (::mkdir(QFile::encodeName(path).constData(), ownerOnly) == 0 || (errno == EEXIST && QFileInfo(path).isDir()))
        return std::nullopt;
    return failure(QT_TRANSLATE_NOOP("lumora::Files", "The storage folder cannot be created: %1."),
                   qt_error_string(errno));
}

FileOutcome replaceFile(const QString &path, QByteArrayView bytes)
{
    constexpr auto what = QT_TRANSLATE_NOOP("lumora::Files", "The file cannot be written: %1.");
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failure(what, file.errorString());
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes.data(), bytes.size()) != bytes.size() || !file.flush())
        return failure(what, file.errorString());
    // QSaveFile goes on where the disk refuses the data; the old file may only be replaced by one that is really there.
    if (FileOutcome failed = syncFile(file.handle(), what))
        return failed;
    if (!file.commit())
        return failure(what, file.errorString());
    syncFolder(QFileInfo(path).path());
    return std::nullopt;
}

FileOutcome copyFile(const QString &from, const QString &to)
{
    constexpr auto what = QT_TRANSLATE_NOOP("lumora::Files", "The file cannot be copied: %1.");
    QFile source(from);
    if (!source.copy(to))
        return failure(what, source.errorString());
    QFile copy(to);
    copy.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    FileOutcome failed =
        copy.open(QIODevice::ReadOnly) ? syncFile(copy.handle(), what) : failure(what, copy.errorString());
    if (failed)
        copy.remove();
    return failed;
}

FileOutcome setFileAside(const QString &path)
{
    const QFileInfo file(path);
    for (int number = 1;; ++number) {
        const QString aside = QStringLiteral("%1/%2.unreadable-%3.%4")
                                  .arg(file.path(), file.completeBaseName(), QString::number(number), file.suffix());
        // RENAME_NOREPLACE decides and renames in one step: no file that was set aside earlier is ever overwritten.
        if (::renameat2(AT_FDCWD, QFile::encodeName(path).constData(), AT_FDCWD, QFile::encodeName(aside).constData(),
                        RENAME_NOREPLACE) == 0) {
            syncFolder(file.path());
            return std::nullopt;
        }
        if (errno == ENOENT)
            return std::nullopt;
        if (errno != EEXIST)
            return failure(QT_TRANSLATE_NOOP("lumora::Files", "The unreadable file cannot be set aside: %1."),
                           qt_error_string(errno));
    }
}

} // namespace lumora
