// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localreply.h"

#include <chrono>
#include <utility>

namespace lumora {

namespace {

constexpr std::chrono::milliseconds frameTime{16};

} // namespace

LocalReply::LocalReply()
{
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    m_pause.setInterval(frameTime);
    connect(&m_pause, &QTimer::timeout, this, &LocalReply::flush);
}

LocalReply::~LocalReply()
{
    cancel();
}

void LocalReply::cancel()
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_pause.stop();
    Q_EMIT cancelled();
}

void LocalReply::answerToolCall(const QString &callID, const QString &output)
{
    if (!m_hasEnded)
        Q_EMIT toolAnswered(callID, output);
}

void LocalReply::takeText(const QString &piece)
{
    if (m_hasEnded)
        return;
    m_gathered += piece;
    if (!m_pause.isActive())
        flush();
}

void LocalReply::takeToolCall(const QString &callID, const QString &toolName, const QByteArray &argumentsJson)
{
    if (m_hasEnded)
        return;
    flush();
    Q_EMIT toolCalled(callID, toolName, argumentsJson);
}

void LocalReply::finish(const Usage &usage, const QByteArray &json)
{
    if (m_hasEnded)
        return;
    flush();
    m_hasEnded = true;
    Q_EMIT finished(usage, json);
}

void LocalReply::fail(const QString &description)
{
    if (m_hasEnded)
        return;
    flush();
    m_hasEnded = true;
    Q_EMIT failed(description);
}

void LocalReply::failLater(const QString &description)
{
    QMetaObject::invokeMethod(
        this, [this, description] { fail(description); }, Qt::QueuedConnection);
}

void LocalReply::flush()
{
    if (m_gathered.isEmpty())
        return;
    m_pause.start();
    Q_EMIT textArrived(std::exchange(m_gathered, {}));
}

} // namespace lumora
