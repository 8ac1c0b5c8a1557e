// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localreply.h"

#include <utility>

namespace lumora {

LocalReply::~LocalReply()
{
    cancel();
}

void LocalReply::cancel()
{
    if (!std::exchange(m_hasEnded, true))
        Q_EMIT cancelled();
}

void LocalReply::answerToolCall(const QString &callID, const QString &output)
{
    if (!m_hasEnded)
        Q_EMIT toolAnswered(callID, output);
}

void LocalReply::takeText(const QString &piece)
{
    if (!m_hasEnded)
        Q_EMIT textArrived(piece);
}

void LocalReply::takeToolCall(const QString &callID, const QString &toolName, const QByteArray &argumentsJson)
{
    if (!m_hasEnded)
        Q_EMIT toolCalled(callID, toolName, argumentsJson);
}

void LocalReply::finish(const Usage &usage, const QByteArray &json)
{
    if (!std::exchange(m_hasEnded, true))
        Q_EMIT finished(usage, json);
}

void LocalReply::fail(const QString &description)
{
    if (!std::exchange(m_hasEnded, true))
        Q_EMIT failed(description);
}

void LocalReply::failLater(const QString &description)
{
    QMetaObject::invokeMethod(
        this, [this, description] { fail(description); }, Qt::QueuedConnection);
}

} // namespace lumora
