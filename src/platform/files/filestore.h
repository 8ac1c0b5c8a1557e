// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lumora {

/// A file operation that failed. The description says what failed and why, for the user, and names no path that the
/// user has not chosen.
struct FileFailure
{
    QString description;
};

/// Nothing where it succeeded.
using FileOutcome = std::optional<FileFailure>;

enum class ReadStatus {
    read,
    missing,    ///< there is no such file
    unreadable, ///< it exists, but cannot be read
};

struct ReadResult
{
    ReadStatus status = ReadStatus::missing;
    QByteArray bytes;
};

// All calls block; any thread.

ReadResult readWholeFile(const QString &path);

/// Creates a folder with its missing parents, for this user alone. One that exists is a success.
FileOutcome createFolder(const QString &path);

/// Replaces the file by these bytes, for this user alone to read. The old file stays whole until the new one is
/// complete and on the disk; after a failure it is as it was.
FileOutcome replaceFile(const QString &path, QByteArrayView bytes);

/// Copies to a path that does not exist yet. After a failure nothing lies there.
FileOutcome copyFile(const QString &from, const QString &to);

/// Renames a file that cannot be understood to a free name beside it, "NAME.unreadable-1.EXTENSION" and up. Its bytes
/// are neither lost nor ever overwritten. A missing file is a success.
FileOutcome setFileAside(const QString &path);

} // namespace lumora
