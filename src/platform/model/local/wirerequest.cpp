// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/wirerequest.h"

namespace lumora {

namespace {

constexpr size_t longestToolOutput = size_t{1024} * 1024; // bytes; far more than any context holds

QString promptText(const Prompt &prompt)
{
    QString text = prompt.text;
    for (const Attachment &attachment : prompt.attachments) {
        const QString label = attachment.labelText().isEmpty() ? QStringLiteral("image") : attachment.labelText();
        text += QStringLiteral("\n\n[%1]").arg(label);
    }
    return text;
}

std::optional<wire::Sampling> toWire(std::optional<GenerationOptions::SamplingMode> mode)
{
    if (!mode)
        return std::nullopt;
    return mode == GenerationOptions::SamplingMode::greedy ? wire::Sampling::greedy : wire::Sampling::random;
}

} // namespace

wire::Respond toWire(qint64 id, const ReplyRequest &request)
{
    wire::Respond message;
    message.id = id;
    message.instructions = request.instructions.toStdString();
    for (const ToolDefinition &tool : request.tools) {
        message.tools.push_back(
            {tool.name.toStdString(), tool.description.toStdString(), tool.parameters.toJson().toStdString()});
    }
    message.prompt = promptText(request.prompt).toStdString();
    if (request.schema)
        message.schema = request.schema->toJson().toStdString();
    message.options.sampling = toWire(request.options.samplingMode);
    message.options.temperature = request.options.temperature;
    message.options.maximumTokens = request.options.maximumResponseTokens;
    return message;
}

std::string toolOutputText(const QString &output)
{
    std::string text = output.toStdString();
    if (text.size() <= longestToolOutput)
        return text;
    const auto isInsideCharacter = [&text](size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    size_t end = longestToolOutput;
    while (isInsideCharacter(end))
        --end;
    text.resize(end);
    return text;
}

} // namespace lumora
