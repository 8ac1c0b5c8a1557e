// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generatedcontent.h"
#include "platform/model/modelservice.h"
#include "platform/model/tool.h"
#include "platform/model/transcript.h"
#include "platform/model/waitpoint.h"

#include <QObject>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>
#include <stop_token>

namespace lumora {

struct Snapshot;
struct ToolOutcome;

/// What a session has to show; shared with its replies, which may outlive it.
struct SessionRecord
{
    Transcript transcript;
    Usage usage;
};

/// One reply of a session: takes what the service sends, runs the tools, and keeps the newest state for who waits.
/// Lives as long as somebody waits for it; used on the main thread.
class ReplyRun : public QObject
{
    Q_OBJECT

public:
    enum class Wake {
        later, ///< from the event loop
        now,   ///< before the call returns, for when there may be no event loop any more
    };

    ReplyRun(std::shared_ptr<SessionRecord> record, ToolList tools);
    ~ReplyRun() override;

    /// Without a service the reply counts as cancelled. Where the service is destroyed, the reply is cancelled at once.
    void start(ModelService *service, ReplyRequest request);

    /// Stops the model and the tools. Changes nothing once the reply has ended, but still wakes who waits for its end.
    void cancel(Wake wake);

    /// The newest snapshot that was not taken yet; nothing once the reply is complete. Throws ModelError after the last
    /// snapshot of a failed reply, CancellationError at once.
    static QCoro::Task<std::optional<Snapshot>> nextSnapshot(std::shared_ptr<ReplyRun> run);

    /// The whole answer of a request with a schema. Throws ModelError, ConversionError, CancellationError.
    static QCoro::Task<GeneratedContent> content(std::shared_ptr<ReplyRun> run);

private:
    enum class State {
        running,
        finished,
        failed,
        cancelled,
    };

    void takeText(const QString &piece);
    void takeToolCall(const QString &serviceCallID, const QString &toolName, const QByteArray &argumentsJson);
    void takeToolOutcome(const QString &callID, const QString &serviceCallID, const ToolOutcome &outcome);
    void takeEnd(const Usage &usage, const QByteArray &json);
    void fail(const QString &description);
    void end(State state);
    void publish();
    std::shared_ptr<const Tool> toolNamed(const QString &name) const;

    std::shared_ptr<SessionRecord> m_record;
    ToolList m_tools;
    std::unique_ptr<ModelReply> m_reply;
    std::stop_source m_toolStop;
    WaitPoint m_news;
    State m_state = State::running;
    QString m_text;
    QByteArray m_json;
    QString m_failure;
    bool m_hasUntakenSnapshot = false;
};

} // namespace lumora
