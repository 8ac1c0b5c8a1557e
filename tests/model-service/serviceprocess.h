// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/frame.h"
#include "wire/messages.h"

#include <QProcess>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// The real service, started as the program starts it. A wait that takes too long ends the test with an exception.
struct ServiceProcess
{
    explicit ServiceProcess(const QString &program, const QStringList &arguments = ownFiles());
    ~ServiceProcess();
    Q_DISABLE_COPY_MOVE(ServiceProcess)

    void send(const wire::Request &request);
    void sendBytes(const QByteArray &bytes);

    /// The next message; nothing where the process has ended.
    std::optional<wire::Answer> receive();

    /// Sends a request and waits for the one answer that ends it. Texts and calls are kept; calls are given the output.
    wire::Answer ask(const wire::Request &request);

    wire::Answer load(const QString &path, std::optional<std::int64_t> contextLimit = {},
                      const QString &projector = {});
    /// Lets it read the tiny models and the folders that a test makes.
    static QStringList ownFiles();

    bool waitForEnd() { return process.waitForFinished(limit); }

    std::string text; ///< of the last request
    std::vector<wire::ToolCall> calls;
    std::string output = "It is Monday.";
    std::function<void()> onText;
    QProcess process;
    wire::FrameReader frames;

    static constexpr int limit = 60000; // milliseconds
};

} // namespace lumora
