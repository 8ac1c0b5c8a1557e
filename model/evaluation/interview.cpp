// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "evaluation/interview.h"

#include "features/currentdatetool.h"
#include "features/documentsearchtool.h"
#include "features/structuredanswer.h"
#include "platform/model/errors.h"
#include "platform/model/languagemodelsession.h"
#include "platform/vision/imagetools.h"

#include <QElapsedTimer>

#include <array>
#include <atomic>
#include <stdexcept>
#include <utility>

namespace lumora::evaluation {

namespace {

/// Puts out what is written down for it, one text after the other.
class ScriptedTool final : public Tool
{
public:
    ScriptedTool(QString name, QString description, GenerationSchema parameters, QStringList outputs)
        : m_name(std::move(name))
        , m_description(std::move(description))
        , m_parameters(std::move(parameters))
        , m_outputs(std::move(outputs))
    {
    }

    QString name() const override { return m_name; }
    QString description() const override { return m_description; }
    GenerationSchema parameters() const override { return m_parameters; }
    // A call that the example has not is wrong already; then there is nothing to put out.
    QString call(const GeneratedContent &, const std::stop_token &) const override
    {
        return m_outputs.value(m_calls++);
    }

private:
    QString m_name;
    QString m_description;
    GenerationSchema m_parameters;
    QStringList m_outputs;
    mutable std::atomic<int> m_calls = 0;
};

/// The schema of the program's that reads so as JSON.
GenerationSchema schemaOf(const std::string &json)
{
    const std::array<GenerationSchema, 3> schemas = {CurrentDateTool::Arguments::generationSchema(),
                                                     DocumentSearchTool::Arguments::generationSchema(),
                                                     NoArguments::generationSchema()};
    for (const GenerationSchema &schema : schemas)
        if (schema.toJson().toStdString() == json)
            return schema;
    throw std::runtime_error("the program has no tool with these arguments: " + json);
}

ToolList scriptedTools(const training::Example &example)
{
    ToolList tools;
    for (const wire::Tool &tool : example.request.tools) {
        QStringList outputs;
        for (const training::Turn &turn : example.turns)
            if (turn.role == training::Turn::Role::tool && turn.tool == tool.name)
                outputs.append(QString::fromStdString(turn.text));
        tools.append(std::make_shared<ScriptedTool>(QString::fromStdString(tool.name),
                                                    QString::fromStdString(tool.description), schemaOf(tool.schema),
                                                    outputs));
    }
    return tools;
}

QList<Call> callsIn(const Transcript &transcript)
{
    QList<Call> calls;
    for (const Transcript::Entry &entry : transcript.entries)
        if (const auto *const made = std::get_if<Transcript::ToolCalls>(&entry))
            for (const Transcript::ToolCall &call : made->calls)
                calls.append({call.toolName, call.arguments});
    return calls;
}

// The prompt of an example has the schema in it already.
QCoro::Task<> askForCard(LanguageModelSession *session, Prompt prompt, Reply *reply)
{
    const StructuredAnswer answer =
        co_await session->respond<StructuredAnswer>(std::move(prompt), IncludeSchemaInPrompt::no, {});
    reply->text = QString::fromUtf8(answer.generatedContent().toJson());
}

QCoro::Task<> askForText(LanguageModelSession *session, Prompt prompt, Reply *reply, QElapsedTimer watch)
{
    ResponseStream stream = session->streamResponse(std::move(prompt), {});
    while (const auto snapshot = co_await stream.next()) {
        if (reply->secondsToText == 0)
            reply->secondsToText = static_cast<double>(watch.nsecsElapsed()) / 1e9;
        reply->text = snapshot->content;
    }
}

} // namespace

QCoro::Task<Reply> interview(SystemLanguageModel model, training::Example example)
{
    if (example.request.schema &&
        *example.request.schema != StructuredAnswer::generationSchema().toJson().toStdString())
        throw std::runtime_error("the program has no answers of this schema: " + *example.request.schema);
    LanguageModelSession session(model, scriptedTools(example), QString::fromStdString(example.request.instructions));
    Prompt prompt{QString::fromStdString(example.request.prompt), {}};
    Reply reply;
    QElapsedTimer watch;
    watch.start();
    try {
        if (example.request.schema)
            co_await askForCard(&session, std::move(prompt), &reply);
        else
            co_await askForText(&session, std::move(prompt), &reply, watch);
    } catch (const ModelError &error) {
        reply.failure = error.description();
    }
    reply.seconds = static_cast<double>(watch.nsecsElapsed()) / 1e9;
    reply.calls = callsIn(session.transcript());
    reply.inputTokens = session.usage().input.totalTokenCount;
    reply.outputTokens = session.usage().output.totalTokenCount;
    co_return reply;
}

} // namespace lumora::evaluation
