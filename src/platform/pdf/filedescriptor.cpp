// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf/filedescriptor.h"

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

} // namespace lumora
