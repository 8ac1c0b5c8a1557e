// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/scriptedmodelservice.h"

#include "platform/model/scripted/scriptedreply.h"

#include <algorithm>
#include <utility>

namespace lumora {

ScriptedModelService::ScriptedModelService(Writer writer, QObject *parent)
    : ModelService(parent)
    , m_writer(std::move(writer))
    , m_counter([](const QString &text) { return (text.size() + 3) / 4; })
{
}

ScriptedModelService::~ScriptedModelService()
{
    m_counts.cancelNow();
}

Availability ScriptedModelService::availability()
{
    ++m_availabilityChecks;
    return m_availability;
}

qint64 ScriptedModelService::contextSize() const
{
    return m_contextSize;
}

QCoro::Task<qint64> ScriptedModelService::tokenCount(QString text)
{
    m_countedTexts.append(text);
    const HeldCount count{std::move(text), m_counts.add()};
    if (m_holdsCounts)
        m_heldCounts.push_back(count);
    else
        answer(count);
    return PendingCount::result(count.pending);
}

void ScriptedModelService::answer(const HeldCount &count) const
{
    if (m_countFailure)
        count.pending->fail(*m_countFailure);
    else
        count.pending->finish(m_counter(count.text));
}

std::unique_ptr<ModelReply> ScriptedModelService::respond(ReplyRequest request)
{
    m_requests.append(request);
    Script script = nextScript(request);
    auto reply = std::make_unique<ScriptedReply>(this, std::move(request), std::move(script));
    m_replies.removeIf([](const auto &earlier) { return earlier.isNull(); });
    m_replies.append(reply.get());
    return reply;
}

Script ScriptedModelService::nextScript(const ReplyRequest &request)
{
    if (!m_queue.isEmpty())
        return m_queue.takeFirst();
    return m_writer ? m_writer(request) : Script::text(QStringLiteral("Scripted reply."));
}

void ScriptedModelService::enqueue(const Script &script)
{
    m_queue.append(script);
}

void ScriptedModelService::setAvailability(Availability availability)
{
    if (std::exchange(m_availability, availability) != availability)
        Q_EMIT availabilityChanged();
}

void ScriptedModelService::setContextSize(qint64 tokens)
{
    m_contextSize = tokens;
}

void ScriptedModelService::setTokenCounter(TokenCounter counter)
{
    m_counter = std::move(counter);
}

void ScriptedModelService::setTokenCountFailure(std::optional<QString> description)
{
    m_countFailure = std::move(description);
}

void ScriptedModelService::holdTokenCounts()
{
    m_holdsCounts = true;
}

void ScriptedModelService::releaseTokenCounts()
{
    m_holdsCounts = false;
    for (const HeldCount &count : std::exchange(m_heldCounts, {}))
        answer(count);
}

void ScriptedModelService::release()
{
    for (const auto &reply : std::as_const(m_replies)) {
        if (reply)
            reply->release();
    }
}

bool ScriptedModelService::isHolding() const
{
    return std::ranges::any_of(m_replies, [](const auto &reply) { return reply && reply->isHeld(); });
}

qint64 ScriptedModelService::countTokens(const QString &text) const
{
    return m_counter(text);
}

void ScriptedModelService::noteCancelled()
{
    ++m_cancelledReplies;
}

} // namespace lumora
