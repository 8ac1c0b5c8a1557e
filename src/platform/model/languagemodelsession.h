// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/errors.h"
#include "platform/model/generable.h"
#include "platform/model/systemlanguagemodel.h"
#include "platform/model/tool.h"
#include "platform/model/transcript.h"

#include <QPointer>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

namespace lumora {

class ReplyRun;
struct SessionRecord;

/// The whole reply text so far, never a piece of it.
struct Snapshot
{
    QString content;
};

/// A reply as it streams in. A snapshot comes when text has arrived, a tool was called, or a tool's output arrived; who
/// takes snapshots slower than they are made gets the newest, and always the last one.
class ResponseStream
{
public:
    explicit ResponseStream(std::shared_ptr<ReplyRun> run);

    /// Waits for the next snapshot; nothing once the reply is complete. Throws CancellationError, and ModelError once
    /// the last snapshot of a failed reply has been taken. One wait at a time.
    QCoro::Task<std::optional<Snapshot>> next();

private:
    std::shared_ptr<ReplyRun> m_run;
};

enum class IncludeSchemaInPrompt {
    no,
    yes, ///< the schema stands as text after the prompt
};

/// One conversation with the model: instructions and tools in, replies out. Used on the main thread; tools run on
/// worker threads. One reply at a time: a new one cancels the one that runs. Does not keep the model's service alive;
/// once that is destroyed, every wait throws CancellationError.
class LanguageModelSession
{
public:
    LanguageModelSession(const SystemLanguageModel &model, ToolList tools, QString instructions);
    /// Cancels the reply that runs: its wait throws CancellationError before this returns.
    ~LanguageModelSession();
    Q_DISABLE_COPY_MOVE(LanguageModelSession)

    ResponseStream streamResponse(Prompt prompt, GenerationOptions options);

    /// Waits for one complete record. Throws ModelError, ConversionError, CancellationError.
    template <Generable T>
    QCoro::Task<T> respond(Prompt prompt, IncludeSchemaInPrompt includeSchema, GenerationOptions options)
    {
        QCoro::Task<GeneratedContent> task =
            respondWithSchema(std::move(prompt), T::generationSchema(), includeSchema, std::move(options));
        const GeneratedContent content = co_await task;
        co_return T::fromGeneratedContent(content);
    }

    const Transcript &transcript() const;
    const Usage &usage() const;

    /// Ends the reply that runs: its wait throws CancellationError, from the event loop.
    void cancel();

private:
    QCoro::Task<GeneratedContent> respondWithSchema(Prompt prompt, GenerationSchema schema,
                                                    IncludeSchemaInPrompt includeSchema, GenerationOptions options);

    std::shared_ptr<ReplyRun> startReply(ReplyRequest request);

    QPointer<ModelService> m_service;
    ToolList m_tools;
    QString m_instructions;
    std::shared_ptr<SessionRecord> m_record;
    std::shared_ptr<ReplyRun> m_run;
};

} // namespace lumora
