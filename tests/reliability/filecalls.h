// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>

#include <functional>
#include <string>
#include <sys/types.h>

namespace lumora {

/// What this process asks of the file system. A program that links this has the calls of the C library in its own
/// hands, those of Qt and SQLite included.
struct FileCall
{
    enum class Kind {
        open,
        read,
        write,
        sync,
        truncate,
        rename,
        link,
        remove,
        makeFolder,
        close,
        ask,         ///< for what lies there
        permissions, ///< and owners
        lock,
    };

    Kind kind = Kind::ask;
    std::string path{}; ///< what it is about; of an open file, the name that it was opened by
    std::string to{};   ///< of a rename or a link
    int handle = -1;
    off_t offset = 0; ///< of a write; of a truncation, the new size
    QByteArrayView data{};
    int flags = 0; ///< of an open
};

/// Sees the calls about one folder and what lies in it, and about files opened there, on whichever thread they are
/// made. What the two functions call themselves is not seen.
struct FileWatch
{
    std::string folder;
    /// Before the call: an errno to fail it with, or 0 to let it through.
    std::function<int(const FileCall &)> before = [](const FileCall &) { return 0; };
    /// After a call that succeeded. handle: the new one, of an open.
    std::function<void(const FileCall &)> after = [](const FileCall &) {};
};

/// Until it is destroyed. One at a time, and no thread may be at work on files when it begins or ends.
class FileWatching
{
public:
    explicit FileWatching(FileWatch watch);
    ~FileWatching();
    FileWatching(const FileWatching &) = delete;
    FileWatching &operator=(const FileWatching &) = delete;
};

} // namespace lumora
