// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/filedescriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <exception>
#include <stop_token>

namespace lumora {

/// What a helper program is asked for.
struct HelperRequest
{
    QString program; ///< absolute path
    QList<QByteArray> arguments;
    std::chrono::steady_clock::time_point deadline;
    qint64 mostBytes; ///< of output
};

/// What a helper program made of a file.
struct HelperAnswer
{
    enum class Outcome {
        complete, ///< output is all that it wrote
        failed,   ///< the file was too much for it, which is logged
        late,     ///< it took too long, wrote too much, or was stopped
    };

    Outcome outcome = Outcome::failed;
    QByteArray output;
};

/// A helper cannot work, whatever the file is; this is logged.
class HelperError : public std::exception
{
public:
    enum class Cause {
        installation, ///< it is missing or not whole, or the system refuses to confine it
        shortage,     ///< of memory, processes or open files; later there may be some
    };

    explicit HelperError(Cause cause)
        : m_cause(cause)
    {
    }

    Cause cause() const { return m_cause; }
    const char *what() const noexcept override { return "a helper program cannot be started"; }

private:
    Cause m_cause;
};

/// Has a helper read an open file. Blocks; any thread. The helper is gone when it returns. Throws HelperError.
HelperAnswer answerOf(const HelperRequest &request, const FileDescriptor &file, const std::stop_token &stop);

} // namespace lumora
