// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/filedescriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lumora {

FileDescriptor::FileDescriptor(int number)
    : m_number(number)
{
}

FileDescriptor::~FileDescriptor()
{
    if (isOpen())
        ::close(m_number);
}

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_number(std::exchange(other.m_number, -1))
{
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

FileDescriptor openedFile(const QString &path, qint64 largestSize)
{
    // Opening a pipe would wait for its writer; files take no notice of O_NONBLOCK.
    FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat facts
    {
    };
    const bool isReadable = file.isOpen() && ::fstat(file.number(), &facts) == 0 && S_ISREG(facts.st_mode) &&
                            facts.st_size > 0 && facts.st_size <= largestSize;
    return isReadable ? std::move(file) : FileDescriptor();
}

} // namespace lumora
