// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"
#include "platform/model/scripted/script.h"

#include <QPointer>
#include <QTimer>

namespace lumora {

class ScriptedModelService;

/// A reply that plays a script, one step a turn of the event loop.
class ScriptedReply final : public ModelReply
{
    Q_OBJECT

public:
    ScriptedReply(ScriptedModelService *service, ReplyRequest request, Script script);
    ~ScriptedReply() override;

    void cancel() override;
    void answerToolCall(const QString &callID, const QString &output) override;

    bool isHeld() const { return m_isHeld; }
    void release();

private:
    void playStep();
    void play(const Script::Text &step);
    void play(const Script::ToolCall &step);
    void play(const Script::Answer &step);
    void play(const Script::Failure &step);
    void play(const Script::Hold &step);
    void finish();
    void end();
    Usage countedUsage() const;

    QPointer<ScriptedModelService> m_service;
    ReplyRequest m_request;
    Script m_script;
    QTimer m_clock;
    qsizetype m_nextStep = 0;
    int m_callCount = 0;
    QString m_awaitedCallID;
    QString m_latestOutput;
    QString m_read;
    QString m_written;
    QByteArray m_json;
    bool m_isHeld = false;
    bool m_hasEnded = false;
};

} // namespace lumora
