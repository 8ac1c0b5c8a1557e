// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filestore.h"

#include "platform/files/identifier.h"
#include "platform/text/textrules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {

namespace {

/// After so many bytes the disk begins to write them, while the rest of the file is still being made.
constexpr qint64 diskStride = 4 * 1024 * 1024;

QString translated(const char *text)
{
    return QCoreApplication::translate("lumora::Files", text);
}

FileOutcome failure(const char *what, const QString &why)
{
    return FileFailure{translated(what).arg(why)};
}

// A disk that fills up takes a part of what it gets, and says no word; only the rest is refused with a reason.

bool writeAll(QFileDevice &file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

bool flushAll(QFileDevice &file)
{
    return file.flush() || file.flush();
}

FileOutcome syncFile(int handle, const char *what)
{
    if (::fsync(handle) == 0 || errno == EINVAL) // EINVAL: nothing that can be synced, such as a pipe
        return std::nullopt;
    return failure(what, qt_error_string(errno));
}

/// Makes the names in this folder survive a power cut. Some file systems cannot sync a folder; the names stand anyway.
void syncFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

constexpr auto writeFailure = QT_TRANSLATE_NOOP("lumora::Files", "The file cannot be written: %1.");

FileOutcome writeContent(QFile &file, const std::function<void(const ByteSink &)> &write)
{
    bool isWritten = file.open(QIODevice::WriteOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    qint64 waiting = 0; // bytes that the disk was not told of
    if (isWritten) {
        write([&](QByteArrayView piece) {
            isWritten = isWritten && writeAll(file, piece);
            waiting += piece.size();
            if (waiting < diskStride)
                return;
            waiting = 0;
            ::sync_file_range(file.handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
        });
    }
    if (!isWritten || !flushAll(file))
        return failure(writeFailure, file.errorString());
    return syncFile(file.handle(), writeFailure);
}

/// Gives a file another's name and place, in one step.
FileOutcome moveOnto(QFile &file, const QString &path)
{
    file.close();
    if (::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        return failure(writeFailure, qt_error_string(errno));
    syncFolder(QFileInfo(path).path());
    return std::nullopt;
}

/// Renames where no file is in the way, in one step that cannot overwrite. errno tells why it failed.
bool renameWithoutOverwriting(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS) // what file systems say that do not know the step
        return false;
    return ::link(from.constData(), to.constData()) == 0 && ::unlink(from.constData()) == 0;
}

constexpr auto copyFailure = QT_TRANSLATE_NOOP("lumora::Files", "The file cannot be copied: %1.");

FileOutcome notCopied(const QString &why)
{
    return failure(copyFailure, why);
}

/// Whether the file system of its folder has no room for a file's name.
bool isNameTooLong(const QString &path)
{
    const QFileInfo file(path);
    const long longest = ::pathconf(QFile::encodeName(file.path()).constData(), _PC_NAME_MAX);
    return longest >= 0 && QFile::encodeName(file.fileName()).size() > longest;
}

FileOutcome copyContent(QFile &source, QFile &copy, const std::stop_token &stop)
{
    constexpr qint64 pieceSize = 1 << 20;
    for (QByteArray piece = source.read(pieceSize); !piece.isEmpty(); piece = source.read(pieceSize)) {
        if (!writeAll(copy, piece))
            return notCopied(copy.errorString());
        if (stop.stop_requested()) // before the disk is waited for
            return notCopied(translated(QT_TRANSLATE_NOOP("lumora::Files", "it was stopped")));
    }
    if (source.error() != QFileDevice::NoError)
        return notCopied(source.errorString());
    return flushAll(copy) ? std::nullopt : notCopied(copy.errorString());
}

} // namespace

std::optional<QByteArray> readWholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(std::move(bytes)) : std::nullopt;
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
    if (::mkdir(QFile::encodeName(path).constData(), ownerOnly) == 0) {
        syncFolder(parent);
        return std::nullopt;
    }
    if (errno == EEXIST && QFileInfo(path).isDir())
        return std::nullopt;
    return failure(QT_TRANSLATE_NOOP("lumora::Files", "The storage folder cannot be created: %1."),
                   qt_error_string(errno));
}

FileOutcome replaceFile(const QString &path, QByteArrayView bytes)
{
    return replaceFile(path, [bytes](const ByteSink &file) { file(bytes); });
}

FileOutcome replaceFile(const QString &path, const std::function<void(const ByteSink &)> &write)
{
    const QString target = QFileInfo(path).isSymLink() ? QFileInfo(path).symLinkTarget() : path;
    // Always the same name: what a crash leaves of it is overwritten by the next attempt.
    QFile file(target + QStringLiteral(".unfinished"));
    FileOutcome failed = writeContent(file, write);
    if (!failed)
        failed = moveOnto(file, target);
    if (failed) {
        file.close(); // which may fail as well, and would keep remove() from removing
        QFile::remove(file.fileName());
    }
    return failed;
}

FileOutcome copyFile(const QString &from, const QString &to, const std::stop_token &stop)
{
    const QFileInfo picked(from);
    if (picked.exists() && !picked.isFile()) // opening a pipe could wait for ever
        return notCopied(translated(QT_TRANSLATE_NOOP("lumora::Files", "it is not a file")));
    if (isNameTooLong(to))
        return notCopied(translated(QT_TRANSLATE_NOOP(
            "lumora::Files",
            "what follows the last full stop in its name is too long. Rename the file and try again")));
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return notCopied(source.errorString());
    // Without a name until it is complete, or with a short one: the name that it is to have may leave no room for more.
    QTemporaryFile copy(QFileInfo(to).path() + QStringLiteral("/XXXXXX"));
    if (!copy.open())
        return notCopied(copy.errorString());
    if (FileOutcome failed = copyContent(source, copy, stop))
        return failed;
    if (FileOutcome failed = syncFile(copy.handle(), copyFailure))
        return failed;
    if (!copy.rename(to))
        return notCopied(copy.errorString());
    copy.setAutoRemove(false);
    syncFolder(QFileInfo(to).path());
    return std::nullopt;
}

QString freshFileName(const QString &path)
{
    return identifierText(QUuid::createUuid()) + u'.' + lowercased(QFileInfo(path).suffix());
}

FileOutcome setFileAside(const QString &path)
{
    const QFileInfo file(path);
    for (int number = 1;; ++number) {
        const QString aside = QStringLiteral("%1/%2.unreadable-%3.%4")
                                  .arg(file.path(), file.completeBaseName(), QString::number(number), file.suffix());
        if (renameWithoutOverwriting(QFile::encodeName(path), QFile::encodeName(aside))) {
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
