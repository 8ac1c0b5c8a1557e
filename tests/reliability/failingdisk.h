// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "reliability/filecalls.h"

#include <QString>

#include <array>
#include <cerrno>

namespace lumora {

/// What files can fail with.
inline constexpr std::array fileErrors{ENOSPC, EACCES, EIO, EINTR, EROFS, ENOENT};

struct Fault
{
    int call = 0; ///< that fails, counted from 1
    int error = EIO;
    bool lasts = false; ///< all that follow fail as well
};

inline QString text(const Fault &fault)
{
    return QStringLiteral("call %1%2 fails: %3")
        .arg(QString::number(fault.call), fault.lasts ? " and each that follows" : "", qt_error_string(fault.error));
}

/// While it lives, the calls about files below a folder fail as it was told.
class FailingDisk
{
public:
    FailingDisk(const QString &folder, Fault fault)
        : m_fault(fault)
        , m_watching({.folder = folder.toStdString(), .before = [this](const FileCall &call) { return answer(call); }})
    {
    }

    bool hasFailed() const { return m_calls >= m_fault.call; }

private:
    int answer(const FileCall &call)
    {
        ++m_calls;
        if (m_calls == m_fault.call)
            return m_fault.error;
        // A lock that is refused is one to wait for.
        const bool fails = m_fault.lasts && m_calls > m_fault.call && call.kind != FileCall::Kind::lock;
        return fails ? m_fault.error : 0;
    }

    Fault m_fault;
    int m_calls = 0;
    FileWatching m_watching;
};

} // namespace lumora
