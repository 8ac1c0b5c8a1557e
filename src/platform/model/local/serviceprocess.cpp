// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/serviceprocess.h"

#include "platform/model/local/memorykills.h"

#include <QProcessEnvironment>

#include <array>
#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <utility>

namespace lumora {

namespace {

constexpr int closingStepMilliseconds = 300;
constexpr qsizetype errorOutputKept = 4096;
constexpr std::array passedVariables{"PATH", "LANG", "LANGUAGE", "LC_ALL", "LC_CTYPE", "TMPDIR"};

QProcessEnvironment childEnvironment()
{
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment passed;
    for (const char *variable : passedVariables) {
        const QString name = QString::fromLatin1(variable);
        if (own.contains(name))
            passed.insert(name, own.value(name));
    }
    return passed;
}

} // namespace

ServiceProcess::ServiceProcess(ServiceCommand command, QObject *parent)
    : QObject(parent)
    , m_command(std::move(command))
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ServiceProcess::takeOutput);
    connect(&m_process, &QProcess::readyReadStandardError, this, &ServiceProcess::takeErrorOutput);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        // This may come from within start, before anybody listens.
        if (error == QProcess::FailedToStart)
            QMetaObject::invokeMethod(
                this, [this] { takeEnd(ServiceEnd::Kind::notStarted, 0); }, Qt::QueuedConnection);
    });
    connect(&m_process, &QProcess::finished, this, [this](int number, QProcess::ExitStatus status) {
        takeEnd(status == QProcess::CrashExit ? ServiceEnd::Kind::signalled : ServiceEnd::Kind::exited, number);
    });
    start();
}

ServiceProcess::~ServiceProcess()
{
    close();
}

void ServiceProcess::start()
{
    m_process.setProgram(m_command.program);
    m_process.setArguments(m_command.arguments);
    m_process.setWorkingDirectory(QStringLiteral("/"));
    m_process.setProcessEnvironment(childEnvironment());
    // It ends by itself when its input ends; this is for one that no longer looks.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start();
}

ServiceProcess::Sent ServiceProcess::send(const wire::Request &request)
{
    m_memoryKillsBefore = memoryKills(m_command.memoryCounters);
    try {
        const std::string frame = wire::frame(wire::encode(request));
        m_process.write(frame.data(), static_cast<qint64>(frame.size()));
        return Sent::yes;
    } catch (const std::length_error &) {
        return Sent::tooLong;
    }
}

void ServiceProcess::endFor(ServiceEnd::Kind reason)
{
    m_reason = reason;
    m_process.kill();
}

void ServiceProcess::close()
{
    if (std::exchange(m_isClosed, true))
        return;
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (m_process.waitForFinished(closingStepMilliseconds))
        return;
    m_process.terminate();
    if (m_process.waitForFinished(closingStepMilliseconds))
        return;
    m_process.kill();
    m_process.waitForFinished(closingStepMilliseconds);
}

// Answers are told from the event loop and not from here: who hears one may close this process.
void ServiceProcess::takeOutput()
{
    const QByteArray bytes = m_process.readAllStandardOutput();
    m_reader.append({bytes.constData(), static_cast<size_t>(bytes.size())});
    if (!std::exchange(m_isDeliveryPosted, true))
        QMetaObject::invokeMethod(this, &ServiceProcess::deliver, Qt::QueuedConnection);
}

void ServiceProcess::takeErrorOutput()
{
    m_errorOutput = (m_errorOutput + m_process.readAllStandardError()).right(errorOutputKept);
}

void ServiceProcess::deliver()
{
    m_isDeliveryPosted = false;
    while (!m_isClosed && !m_reason) {
        const std::optional<std::string> body = m_reader.next();
        if (!body)
            break;
        const std::optional<wire::Answer> answer = wire::decodeAnswer(*body);
        if (!answer) {
            endFor(ServiceEnd::Kind::garbled);
            return;
        }
        m_hasAnswered = true;
        Q_EMIT answered(*answer);
    }
    if (m_reader.isBroken() && !m_isClosed && !m_reason)
        endFor(ServiceEnd::Kind::garbled);
}

void ServiceProcess::takeEnd(ServiceEnd::Kind kind, int number)
{
    deliver();
    if (std::exchange(m_isClosed, true))
        return;
    ServiceEnd end;
    end.kind = m_reason.value_or(kind);
    end.number = number;
    end.isOutOfMemory = m_memoryKillsBefore && m_memoryKillsBefore < memoryKills(m_command.memoryCounters);
    end.hasAnswered = m_hasAnswered;
    end.lastWords = QString::fromUtf8(m_errorOutput).trimmed();
    Q_EMIT ended(end);
}

} // namespace lumora
