// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/cannedconversation.h"

#include "platform/model/generatedcontent.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace lumora {

namespace {

constexpr std::array texts{
    "Hello! I am the **scripted model**: everything I say was written beforehand, so that the window can be worked on "
    "without a real model.\n\nAsk about *today* to see a tool at work, or switch to **Structured** for a card.",

    "Good question. Three things usually help:\n\n- Write down what you already know.\n- Try the *smallest* change "
    "that "
    "could work.\n- Look at the result before you go on.\n\nThe command `ls -la` shows where you stand.",

    "In short: **yes**, with care. The longer answer has two sides. What is quick to do is also quick to undo, so it "
    "can be tried at once; what is hard to undo deserves a second look and a copy of the data beforehand.\n\nMore "
    "about this stands at [the example page](https://example.org/).",

    "Let me think aloud. A single window, a list of chats on the left, the messages in the middle: ~~everything~~ "
    "almost everything that you see is drawn from one list, and only the last row of it grows while I write this "
    "sentence.",
};

QString offeredTool(const ReplyRequest &request, QStringView part)
{
    const auto found = std::ranges::find_if(
        request.tools, [part](const ToolDefinition &tool) { return tool.name.contains(part, Qt::CaseInsensitive); });
    return found == request.tools.end() ? QString() : found->name;
}

QString latestMessage(const QString &prompt)
{
    static const QRegularExpression layout(QStringLiteral("Latest user message:\n(.*)\n\nRespond to the latest"),
                                           QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = layout.match(prompt);
    return match.hasMatch() ? match.captured(1) : prompt;
}

// The right arguments for any tool: the user's words for every text that it asks for.
QByteArray argumentsFor(const ReplyRequest &request, const QString &toolName)
{
    const auto tool = std::ranges::find(request.tools, toolName, &ToolDefinition::name);
    GeneratedContent::Properties arguments;
    for (const GenerationSchema::Property &property : tool->parameters.properties)
        arguments.emplace_back(property.name, latestMessage(request.prompt.text));
    return GeneratedContent(std::move(arguments)).toJson();
}

Script cannedAnswer(const GenerationSchema &schema)
{
    GeneratedContent::Properties properties;
    for (const GenerationSchema::Property &property : schema.properties) {
        if (property.type == GenerationSchema::Type::listOfText) {
            properties.emplace_back(property.name, QStringList{QStringLiteral("Everything stays on this computer"),
                                                               QStringLiteral("Replies stream in as they are written"),
                                                               QStringLiteral("A card keeps its parts apart")});
        } else if (property.name == QLatin1String("title")) {
            properties.emplace_back(property.name, QStringLiteral("A card from the scripted model"));
        } else {
            properties.emplace_back(property.name,
                                    QStringLiteral("This is what a structured answer looks like: a title, a summary, "
                                                   "the points that matter, and what to do next."));
        }
    }
    return Script::answer(GeneratedContent(std::move(properties)).toJson());
}

Script toolReply(const ReplyRequest &request, const QString &toolName, const QString &text)
{
    Script script;
    script.steps.append(Script::ToolCall{toolName, argumentsFor(request, toolName)});
    return script.then(Script::words(text));
}

} // namespace

Script cannedReply(const ReplyRequest &request, std::chrono::milliseconds pieceDelay)
{
    Script script;
    if (const QString date = offeredTool(request, u"date"); !date.isEmpty())
        script = toolReply(request, date, QStringLiteral("It is **%output%**. A good moment to get things done."));
    else if (!request.tools.isEmpty())
        script = toolReply(request, request.tools.first().name, QStringLiteral("This is what I found:\n\n%output%"));
    else if (!request.schema)
        script = Script::words(QString::fromUtf8(texts.at(qHash(request.prompt.text) % texts.size())));
    if (request.schema)
        script = script.then(cannedAnswer(*request.schema));
    script.pieceDelay = pieceDelay;
    return script;
}

} // namespace lumora
