// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "serviceprocess.h"

#include <QDir>

#include <stdexcept>

namespace lumora {

ServiceProcess::ServiceProcess(const QString &program, const QStringList &arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForStarted(limit))
        throw std::runtime_error("the service does not start");
}

ServiceProcess::~ServiceProcess()
{
    process.closeWriteChannel();
    process.waitForFinished(limit);
}

QStringList ServiceProcess::ownFiles()
{
    return {"--reads", TINY_MODELS, "--reads", QDir::tempPath()};
}

void ServiceProcess::send(const wire::Request &request)
{
    sendBytes(QByteArray::fromStdString(wire::frame(wire::encode(request))));
}

void ServiceProcess::sendBytes(const QByteArray &bytes)
{
    process.write(bytes);
    while (process.bytesToWrite() > 0 && process.waitForBytesWritten(limit)) {
    }
}

std::optional<wire::Answer> ServiceProcess::receive()
{
    for (;;) {
        if (const auto body = frames.next()) {
            auto answer = wire::decodeAnswer(*body);
            if (!answer)
                throw std::runtime_error("not a message: " + *body);
            return answer;
        }
        if (frames.isBroken())
            throw std::runtime_error("the service wrote something that is not a frame");
        if (process.bytesAvailable() == 0 && !process.waitForReadyRead(limit)) {
            if (process.state() == QProcess::NotRunning)
                return std::nullopt;
            throw std::runtime_error("the service does not answer");
        }
        frames.append(process.readAllStandardOutput().toStdString());
    }
}

wire::Answer ServiceProcess::ask(const wire::Request &request)
{
    text.clear();
    calls.clear();
    send(request);
    for (;;) {
        const auto answer = receive();
        if (!answer)
            throw std::runtime_error("the service has ended");
        if (const auto *const piece = std::get_if<wire::Text>(&*answer)) {
            text += piece->piece;
            if (onText)
                onText();
        } else if (const auto *const call = std::get_if<wire::ToolCall>(&*answer)) {
            calls.push_back(*call);
            send(wire::ToolOutput{call->id, call->call, output});
        } else {
            return *answer;
        }
    }
}

wire::Answer ServiceProcess::load(const QString &path, std::optional<std::int64_t> contextLimit,
                                  const QString &projector)
{
    wire::Load request{1, path.toStdString(), contextLimit};
    if (!projector.isEmpty())
        request.projector = projector.toStdString();
    return ask(request);
}

} // namespace lumora
