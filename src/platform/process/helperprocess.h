// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/filedescriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <sys/types.h>

namespace lumora {

/// A process that reads an open file as its standard input and answers on its standard output. It gets no environment
/// and no other open file, works in the root folder, and is not heard on standard error. With this object it is killed,
/// along with what it has started itself, and nothing is left of it. No event loop is needed; one thread at a time.
class HelperProcess
{
public:
    /// Starts it; program: an absolute path.
    HelperProcess(const QString &program, QList<QByteArray> arguments, const FileDescriptor &input);
    ~HelperProcess();
    HelperProcess(const HelperProcess &) = delete;
    HelperProcess &operator=(const HelperProcess &) = delete;

    /// Why it could not be started, as errno says it; 0 where it was.
    int startError() const { return m_startError; }
    /// What it writes.
    const FileDescriptor &output() const { return m_output; }
    /// For poll: can be read from once the process has ended.
    const FileDescriptor &endEvent() const { return m_endEvent; }

    /// Kills it unless it has ended by itself. How it ended, as waitpid says it. Once.
    int end();

private:
    void start(const QString &program, QList<QByteArray> &arguments, int input);

    FileDescriptor m_output;
    FileDescriptor m_endEvent;
    pid_t m_process = 0; // 0: there is none, or none any more
    int m_startError = 0;
};

} // namespace lumora
