// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"

namespace lumora {

/// A reply of the model service.
class LocalReply final : public ModelReply
{
    Q_OBJECT

public:
    ~LocalReply() override;

    void cancel() override;
    void answerToolCall(const QString &callID, const QString &output) override;

    // What the service says. All of it is ignored once the reply has ended.
    void takeText(const QString &piece);
    void takeToolCall(const QString &callID, const QString &toolName, const QByteArray &argumentsJson);
    void finish(const Usage &usage, const QByteArray &json);
    void fail(const QString &description);
    bool hasEnded() const { return m_hasEnded; }
    /// Ends it without a word, to anybody: the service goes.
    void silence() { m_hasEnded = true; }
    /// From the event loop.
    void failLater(const QString &description);

Q_SIGNALS:
    void cancelled();
    void toolAnswered(const QString &callID, const QString &output);

private:
    bool m_hasEnded = false;
};

} // namespace lumora
