// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/serviceend.h"

#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <optional>
#include <wire/frame.h>
#include <wire/messages.h>

namespace lumora {

/// How the model service is started.
struct ServiceCommand
{
    QString program;
    QStringList arguments;
    /// Where the kernel counts what it has killed for lack of memory.
    QString memoryCounters = QStringLiteral("/proc/vmstat");
};

/// The model service as a process: messages in and out, and how it ended. It gets an environment of a few harmless
/// variables, works in the root folder, and ends when this process ends, however that happens.
class ServiceProcess : public QObject
{
    Q_OBJECT

public:
    /// Starts it.
    explicit ServiceProcess(ServiceCommand command, QObject *parent = nullptr);
    /// Closes it.
    ~ServiceProcess() override;

    enum class Sent {
        yes,
        tooLong, ///< for a frame; nothing was sent
    };
    Sent send(const wire::Request &request);

    /// Ends it without mercy; ended follows, and tells the reason given here.
    void endFor(ServiceEnd::Kind reason);

    /// Asks it to end, and makes it end where it does not; waits for that, less than a second. No signal follows.
    void close();

Q_SIGNALS:
    /// Not from within a call.
    void answered(const lumora::wire::Answer &answer);
    /// Once, after the last answer.
    void ended(const lumora::ServiceEnd &end);

private:
    void start();
    void takeOutput();
    void takeErrorOutput();
    void deliver();
    void takeEnd(ServiceEnd::Kind kind, int number);

    ServiceCommand m_command;
    QProcess m_process;
    wire::FrameReader m_reader;
    QByteArray m_errorOutput;
    std::optional<ServiceEnd::Kind> m_reason;  // why it was ended here
    std::optional<qint64> m_memoryKillsBefore; // the latest message
    bool m_isDeliveryPosted = false;
    bool m_hasAnswered = false;
    bool m_isClosed = false;
};

} // namespace lumora
