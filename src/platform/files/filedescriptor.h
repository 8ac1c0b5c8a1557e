// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// An open file of the system, closed with its owner.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    /// Takes over what a system call returned; negative where that failed.
    explicit FileDescriptor(int number);
    ~FileDescriptor();
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isOpen() const { return m_number >= 0; }
    /// Negative where nothing is open.
    int number() const { return m_number; }

private:
    int m_number = -1;
};

/// Open for reading where the path is that of a regular file with something in it, and not more than this.
FileDescriptor openedFile(const QString &path, qint64 largestSize);

} // namespace lumora
