// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/languagemodelsession.h"

#include "platform/model/replyrun.h"

namespace lumora {

namespace {

QList<ToolDefinition> definitions(const ToolList &tools)
{
    QList<ToolDefinition> result;
    result.reserve(tools.size());
    for (const auto &tool : tools) {
        const QString description = tool->includesSchemaInInstructions() ? tool->description() : QString();
        result.append({tool->name(), description, tool->parameters()});
    }
    return result;
}

// At the end of the prompt and not in the instructions: what the engine has computed for the instructions and the
// earlier conversation then serves both kinds of reply.
void appendSchema(QString &promptText, const GenerationSchema &schema)
{
    promptText += QStringLiteral("\n\nAnswer with one JSON object that fits this schema:\n");
    promptText += QString::fromUtf8(schema.toJson());
}

} // namespace

ResponseStream::ResponseStream(std::shared_ptr<ReplyRun> run)
    : m_run(std::move(run))
{
}

QCoro::Task<std::optional<Snapshot>> ResponseStream::next()
{
    return ReplyRun::nextSnapshot(m_run);
}

LanguageModelSession::LanguageModelSession(const SystemLanguageModel &model, ToolList tools, QString instructions)
    : m_service(model.service())
    , m_tools(std::move(tools))
    , m_instructions(std::move(instructions))
    , m_record(std::make_shared<SessionRecord>())
{
    if (!m_instructions.isEmpty())
        m_record->transcript.entries.append(Transcript::Instructions{m_instructions});
}

LanguageModelSession::~LanguageModelSession()
{
    if (m_run)
        m_run->cancel(ReplyRun::Wake::now);
}

ResponseStream LanguageModelSession::streamResponse(Prompt prompt, GenerationOptions options)
{
    return ResponseStream(startReply({m_instructions, {}, std::move(prompt), std::nullopt, std::move(options)}));
}

QCoro::Task<GeneratedContent> LanguageModelSession::respondWithSchema(Prompt prompt, GenerationSchema schema,
                                                                      IncludeSchemaInPrompt includeSchema,
                                                                      GenerationOptions options)
{
    if (includeSchema == IncludeSchemaInPrompt::yes)
        appendSchema(prompt.text, schema);
    return ReplyRun::content(
        startReply({m_instructions, {}, std::move(prompt), std::move(schema), std::move(options)}));
}

std::shared_ptr<ReplyRun> LanguageModelSession::startReply(ReplyRequest request)
{
    cancel();
    request.tools = definitions(m_tools);
    m_record->transcript.entries.append(Transcript::PromptText{request.prompt.text});
    m_run = std::make_shared<ReplyRun>(m_record, m_tools);
    m_run->start(m_service, std::move(request));
    return m_run;
}

const Transcript &LanguageModelSession::transcript() const
{
    return m_record->transcript;
}

const Usage &LanguageModelSession::usage() const
{
    return m_record->usage;
}

void LanguageModelSession::cancel()
{
    if (m_run)
        m_run->cancel(ReplyRun::Wake::later);
}

} // namespace lumora
