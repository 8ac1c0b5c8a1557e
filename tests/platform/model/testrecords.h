// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/textargument.h"
#include "platform/model/tool.h"

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

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
    static constexpr TextProperty asked{u"question", u"What to ask"};
    using Arguments = TextArgument<asked>;

    QString name = "ask";
    QString description = "Asks something.";
    std::function<QString(const QString &)> action = [](const QString &question) { return question.toUpper(); };

    QString call(const Arguments &arguments, const std::stop_token & /*stop*/) const { return action(arguments.text); }
};

/// A tool that works until it is stopped.
struct EndlessTool
{
    using Arguments = TestTool::Arguments;

    QString name = "ask";
    QString description = "Asks for ever.";
    std::shared_ptr<std::atomic<bool>> isRunning = std::make_shared<std::atomic<bool>>(false);

    QString call(const Arguments &arguments, const std::stop_token &stop) const
    {
        *isRunning = true;
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait(lock, stop, [] { return false; });
        *isRunning = false;
        return arguments.text;
    }
};

} // namespace lumora
