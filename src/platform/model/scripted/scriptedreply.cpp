// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/scriptedreply.h"

#include "platform/model/scripted/scriptedmodelservice.h"

namespace lumora {

ScriptedReply::ScriptedReply(ScriptedModelService *service, ReplyRequest request, Script script)
    : m_service(service)
    , m_request(std::move(request))
    , m_script(std::move(script))
    , m_read(m_request.instructions + m_request.prompt.text)
{
    m_clock.setSingleShot(true);
    m_clock.setTimerType(Qt::PreciseTimer);
    m_clock.setInterval(m_script.pieceDelay);
    connect(&m_clock, &QTimer::timeout, this, &ScriptedReply::playStep);
    m_clock.start();
}

ScriptedReply::~ScriptedReply()
{
    cancel();
}

void ScriptedReply::cancel()
{
    if (m_hasEnded)
        return;
    end();
    if (m_service)
        m_service->noteCancelled();
}

void ScriptedReply::answerToolCall(const QString &callID, const QString &output)
{
    if (m_hasEnded || callID != m_awaitedCallID)
        return;
    m_awaitedCallID.clear();
    m_latestOutput = output;
    m_read += output;
    m_clock.start();
}

void ScriptedReply::release()
{
    if (m_hasEnded || !m_isHeld)
        return;
    m_isHeld = false;
    m_clock.start();
}

void ScriptedReply::playStep()
{
    if (m_nextStep == m_script.steps.size()) {
        finish();
        return;
    }
    const Script::Step step = m_script.steps.at(m_nextStep++);
    std::visit([this](const auto &kind) { play(kind); }, step);
}

void ScriptedReply::play(const Script::Text &step)
{
    QString piece = step.piece;
    piece.replace(QStringLiteral("%output%"), m_latestOutput);
    m_written += piece;
    m_clock.start();
    Q_EMIT textArrived(piece);
}

void ScriptedReply::play(const Script::ToolCall &step)
{
    m_awaitedCallID = QString::number(++m_callCount);
    m_written += QString::fromUtf8(step.argumentsJson);
    Q_EMIT toolCalled(m_awaitedCallID, step.toolName, step.argumentsJson);
}

void ScriptedReply::play(const Script::Answer &step)
{
    m_json = step.json;
    m_written += QString::fromUtf8(step.json);
    m_clock.start();
}

void ScriptedReply::play(const Script::Failure &step)
{
    end();
    Q_EMIT failed(step.description);
}

void ScriptedReply::play(const Script::Hold &)
{
    m_isHeld = true;
}

void ScriptedReply::finish()
{
    const Usage usage = m_script.usage ? *m_script.usage : countedUsage();
    end();
    Q_EMIT finished(usage, m_json);
}

void ScriptedReply::end()
{
    m_hasEnded = true;
    m_clock.stop();
}

Usage ScriptedReply::countedUsage() const
{
    if (!m_service)
        return {};
    return {{m_service->countTokens(m_read)}, {m_service->countTokens(m_written)}};
}

} // namespace lumora
