// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/bytesink.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

namespace lumora {

/// A file operation that failed. The description says what failed and why, for the user, and names no path that the
/// user has not chosen.
struct FileFailure
{
    QString description;
};

/// Nothing where it succeeded.
using FileOutcome = std::optional<FileFailure>;

// All calls block; any thread.

/// Nothing where the file is missing or cannot be read; the two are not told apart, since a file may be out of reach
/// for many reasons, and come back.
std::optional<QByteArray> readWholeFile(const QString &path);

/// Creates a folder with its missing parents, for this user alone. One that exists is a success.
FileOutcome createFolder(const QString &path);

/// Replaces the file by these bytes, for this user alone to read. The old file stays whole until the new one, which is
/// called "NAME.unfinished" until then, is complete and on the disk; after a failure it is as it was. One call at a
/// time for a file.
FileOutcome replaceFile(const QString &path, QByteArrayView bytes);

/// The same with content that comes in pieces: `write` gives them to the sink that it gets, all within the call.
FileOutcome replaceFile(const QString &path, const std::function<void(const ByteSink &)> &write);

/// Copies a regular file to a path that does not exist yet, for this user alone to read. After a failure nothing lies
/// there; a stop counts as one.
FileOutcome copyFile(const QString &from, const QString &to, const std::stop_token &stop = {});

/// A name that no other stored file has: a new identifier, a full stop, and the extension of the file that it is for,
/// in lower case. A file without an extension gets a name that ends in the full stop.
QString freshFileName(const QString &path);

/// Renames a file that cannot be understood to a free name beside it, "NAME.unreadable-1.EXTENSION" and up. Its bytes
/// are neither lost nor ever overwritten. A missing file is a success.
FileOutcome setFileAside(const QString &path);

} // namespace lumora
