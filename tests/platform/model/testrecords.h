// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/tool.h"

#include <QStringList>

#include <functional>

namespace lumora {

/// A record with one property of each type.
struct TestCard
{
    QString title;
    QStringList points;

    static GenerationSchema generationSchema()
    {
        return {"TestCard",
                {{"title", "A \"short\" title", GenerationSchema::Type::text},
                 {"points", "What matters", GenerationSchema::Type::listOfText}}};
    }
    static TestCard fromGeneratedContent(const GeneratedContent &content)
    {
        return {content.text(u"title"), content.texts(u"points")};
    }
    GeneratedContent generatedContent() const
    {
        return GeneratedContent::Properties{{"title", title}, {"points", points}};
    }
    bool operator==(const TestCard &) const = default;
};

/// A tool that does what the test gives it to do.
struct TestTool
{
    struct Arguments
    {
        QString question;

        static GenerationSchema generationSchema()
        {
            return {"Arguments", {{"question", "What to ask", GenerationSchema::Type::text}}};
        }
        static Arguments fromGeneratedContent(const GeneratedContent &content) { return {content.text(u"question")}; }
        GeneratedContent generatedContent() const { return GeneratedContent::Properties{{"question", question}}; }
    };

    QString name = "ask";
    QString description = "Asks something.";
    std::function<QString(const QString &)> action = [](const QString &question) { return question.toUpper(); };

    QString call(const Arguments &arguments) const { return action(arguments.question); }
};

} // namespace lumora
