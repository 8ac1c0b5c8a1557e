// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/filedescriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
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
        unusable, ///< it cannot work here, whatever the file is, as where it is not installed; this is logged
    };

    Outcome outcome = Outcome::failed;
    QByteArray output;
};

/// Has a helper read an open file. Blocks; any thread. The helper is gone when it returns.
HelperAnswer answerOf(const HelperRequest &request, const FileDescriptor &file, const std::stop_token &stop);

} // namespace lumora
