// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/replyrun.h"

#include "platform/model/languagemodelsession.h"
#include "platform/model/toolrunner.h"

#include <QCoreApplication>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace lumora {

ReplyRun::ReplyRun(std::shared_ptr<SessionRecord> record, ToolList tools)
    : m_record(std::move(record))
    , m_tools(std::move(tools))
{
}

ReplyRun::~ReplyRun()
{
    m_toolStop.request_stop();
}

void ReplyRun::start(ModelService *service, ReplyRequest request)
{
    if (!service) {
        m_state = State::cancelled;
        return;
    }
    m_reply = service->respond(std::move(request));
    connect(m_reply.get(), &ModelReply::textArrived, this, &ReplyRun::takeText);
    connect(m_reply.get(), &ModelReply::toolCalled, this, &ReplyRun::takeToolCall);
    connect(m_reply.get(), &ModelReply::finished, this, &ReplyRun::takeEnd);
    connect(m_reply.get(), &ModelReply::failed, this, &ReplyRun::fail);
    connect(service, &QObject::destroyed, this, [this] { cancel(Wake::now); });
}

void ReplyRun::cancel(Wake wake)
{
    if (m_state == State::running)
        end(State::cancelled);
    if (wake == Wake::now)
        m_news.wakeNow();
    else
        m_news.wakeLater();
}

void ReplyRun::takeText(const QString &piece)
{
    if (m_state != State::running || piece.isEmpty())
        return;
    m_text += piece;
    publish();
}

void ReplyRun::takeToolCall(const QString &serviceCallID, const QString &toolName, const QByteArray &argumentsJson)
{
    if (m_state != State::running)
        return;
    // The service's own id is unique in this reply only.
    const QString callID = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_record->transcript.entries.append(Transcript::ToolCalls{{{callID, toolName, QString::fromUtf8(argumentsJson)}}});
    publish();

    const std::shared_ptr<const Tool> tool = toolNamed(toolName);
    if (!tool) {
        fail(QCoreApplication::translate(
                 "LanguageModel", "The model called the tool “%1”, which it was not offered. Send the message again.")
                 .arg(toolName));
        return;
    }
    auto *watcher = runTool(tool, argumentsJson, m_toolStop.get_token(), this);
    connect(watcher, &QFutureWatcherBase::finished, this,
            [this, watcher, callID, serviceCallID] { takeToolOutcome(callID, serviceCallID, watcher->result()); });
}

void ReplyRun::takeToolOutcome(const QString &callID, const QString &serviceCallID, const ToolOutcome &outcome)
{
    if (m_state != State::running)
        return;
    if (!outcome.output) {
        fail(outcome.failure);
        return;
    }
    m_record->transcript.entries.append(Transcript::ToolOutput{callID, *outcome.output});
    publish();
    m_reply->answerToolCall(serviceCallID, *outcome.output);
}

void ReplyRun::takeEnd(const Usage &usage, const QByteArray &json)
{
    if (m_state != State::running)
        return;
    m_state = State::finished;
    m_json = json;
    m_record->usage.input.totalTokenCount += usage.input.totalTokenCount;
    m_record->usage.output.totalTokenCount += usage.output.totalTokenCount;
    m_record->transcript.entries.append(Transcript::Response{json.isEmpty() ? m_text : QString::fromUtf8(json)});
    m_news.wakeLater();
}

void ReplyRun::fail(const QString &description)
{
    if (m_state != State::running)
        return;
    m_failure = description;
    end(State::failed);
    m_news.wakeLater();
}

/// Before its time.
void ReplyRun::end(State state)
{
    m_state = state;
    m_toolStop.request_stop();
    m_reply->cancel();
}

void ReplyRun::publish()
{
    m_hasUntakenSnapshot = true;
    m_news.wakeLater();
}

std::shared_ptr<const Tool> ReplyRun::toolNamed(const QString &name) const
{
    const auto found = std::ranges::find_if(m_tools, [&name](const auto &tool) { return tool->name() == name; });
    return found == m_tools.end() ? nullptr : *found;
}

QCoro::Task<std::optional<Snapshot>> ReplyRun::nextSnapshot(std::shared_ptr<ReplyRun> run)
{
    while (run->m_state == State::running && !run->m_hasUntakenSnapshot)
        co_await run->m_news;

    if (run->m_state == State::cancelled)
        throw CancellationError();
    if (std::exchange(run->m_hasUntakenSnapshot, false))
        co_return std::optional<Snapshot>(Snapshot{run->m_text});
    if (run->m_state == State::failed)
        throw ModelError(run->m_failure);
    co_return std::optional<Snapshot>();
}

QCoro::Task<GeneratedContent> ReplyRun::content(std::shared_ptr<ReplyRun> run)
{
    bool isComplete = false;
    while (!isComplete) {
        QCoro::Task<std::optional<Snapshot>> task = nextSnapshot(run);
        const std::optional<Snapshot> snapshot = co_await task;
        isComplete = !snapshot.has_value();
    }
    GeneratedContent content = GeneratedContent::fromJson(run->m_json);
    co_return content;
}

} // namespace lumora
