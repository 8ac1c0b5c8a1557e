// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/wirerequest.h"

#include <utility>

namespace lumora {

namespace {

constexpr size_t longestToolOutput = size_t{1024} * 1024; // bytes; far more than any context holds

QString labelOf(const Attachment &attachment)
{
    return attachment.labelText().isEmpty() ? QStringLiteral("image") : attachment.labelText();
}

void addPrompt(wire::Respond &message, const Prompt &prompt, AttachedImages images)
{
    images.resize(size_t(prompt.attachments.size()));
    QString text = prompt.text;
    for (qsizetype i = 0; i < prompt.attachments.size(); ++i) {
        if (std::optional<wire::Image> &image = images[size_t(i)])
            message.images.push_back(std::move(*image));
        else
            text += QStringLiteral("\n\n[%1]").arg(labelOf(prompt.attachments[i]));
    }
    message.prompt = text.toStdString();
}

std::optional<wire::Sampling> toWire(std::optional<GenerationOptions::SamplingMode> mode)
{
    if (!mode)
        return std::nullopt;
    return mode == GenerationOptions::SamplingMode::greedy ? wire::Sampling::greedy : wire::Sampling::random;
}

} // namespace

wire::Respond toWire(qint64 id, const ReplyRequest &request, AttachedImages images)
{
    wire::Respond message;
    message.id = id;
    message.instructions = request.instructions.toStdString();
    for (const ToolDefinition &tool : request.tools) {
        message.tools.push_back(
            {tool.name.toStdString(), tool.description.toStdString(), tool.parameters.toJson().toStdString()});
    }
    addPrompt(message, request.prompt, std::move(images));
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
