// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/availability.h"
#include "platform/model/generationoptions.h"
#include "platform/model/generationschema.h"
#include "platform/model/prompt.h"
#include "platform/model/transcript.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

namespace lumora {

/// A tool as it is described to the model.
struct ToolDefinition
{
    QString name;
    QString description;
    GenerationSchema parameters;
};

/// One reply to be generated, as free text or, with a schema, as one JSON object.
struct ReplyRequest
{
    QString instructions;
    QList<ToolDefinition> tools;
    Prompt prompt;
    std::optional<GenerationSchema> schema;
    GenerationOptions options;
};

/// A reply while it is generated. Signals come from the event loop, never from within a call, so that who starts a
/// reply can connect first. After finished, failed or cancel nothing more comes. Destroying a reply cancels it. A
/// reply may outlive its service; it is silent then.
class ModelReply : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Stops the generation within one token's time. No signal follows.
    virtual void cancel() = 0;

    /// Gives the output of a call that the reply waits for.
    virtual void answerToolCall(const QString &callID, const QString &output) = 0;

Q_SIGNALS:
    /// The next piece of the text, whole characters only. With a schema nothing comes before the end.
    void textArrived(const QString &piece);
    void toolCalled(const QString &callID, const QString &toolName, const QByteArray &argumentsJson);
    /// json: the object that the schema asked for; empty for a text reply.
    void finished(const lumora::Usage &usage, const QByteArray &json);
    /// description: a whole sentence for the user.
    void failed(const QString &description);
};

/// The engine behind the language model: the one interface that a real service and a scripted one share.
/// All of it is used on the main thread.
class ModelService : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Looks at the model files anew and says at once whether a request would be answered now.
    virtual Availability availability() = 0;

    /// Tokens, of the model that was loaded last while another is loading; 0 where none was, or none can be.
    virtual qint64 contextSize() const = 0;

    /// Throws ModelError; throws CancellationError where the service is destroyed meanwhile.
    virtual QCoro::Task<qint64> tokenCount(QString text) = 0;

    virtual std::unique_ptr<ModelReply> respond(ReplyRequest request) = 0;

Q_SIGNALS:
    /// Something happened that a new look at the availability would show.
    void availabilityChanged();
};

} // namespace lumora
