// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/watchedmodel.h"

#include <utility>

namespace lumora::races {

namespace {

const QString deathNotice = QStringLiteral("The language model stopped unexpectedly. Send the message again.");

class WatchedReply final : public ModelReply
{
public:
    WatchedReply(StoreReference &reference, std::unique_ptr<ModelReply> reply, QStringList tools)
        : m_reference(reference)
        , m_reply(std::move(reply))
        , m_tools(std::move(tools))
    {
        connect(m_reply.get(), &ModelReply::textArrived, this, [this](const QString &piece) {
            m_reference.addText(piece);
            Q_EMIT textArrived(piece);
        });
        connect(m_reply.get(), &ModelReply::toolCalled, this,
                [this](const QString &id, const QString &name, const QByteArray &arguments) {
                    m_reference.addToolCall(id, name, m_tools);
                    Q_EMIT toolCalled(id, name, arguments);
                });
        connect(m_reply.get(), &ModelReply::finished, this, [this](const Usage &usage, const QByteArray &json) {
            m_reference.finish(usage, json);
            m_isOver = true;
            Q_EMIT finished(usage, json);
        });
        connect(m_reply.get(), &ModelReply::failed, this, &WatchedReply::end);
    }

    ~WatchedReply() override { m_isOver = true; }

    void end(const QString &description)
    {
        m_reference.fail(description);
        m_isOver = true;
        Q_EMIT failed(description);
    }

    /// By the program. Where the user has not stopped the reply, a tool has failed, in words of its own.
    void cancel() override
    {
        if (!std::exchange(m_isOver, true))
            m_reference.fail("*");
        m_reply->cancel();
    }

    void answerToolCall(const QString &callID, const QString &output) override
    {
        m_reference.addToolOutput(callID);
        m_reply->answerToolCall(callID, output);
    }

    void die()
    {
        m_reply->cancel();
        if (!m_isOver)
            end(deathNotice);
    }

private:
    StoreReference &m_reference;
    std::unique_ptr<ModelReply> m_reply;
    QStringList m_tools;
    bool m_isOver = false;
};

} // namespace

WatchedModel::WatchedModel(StoreReference &reference, Names documentNames, Writer writer)
    : ScriptedModelService(std::move(writer))
    , m_reference(reference)
    , m_documentNames(std::move(documentNames))
{
}

QCoro::Task<qint64> WatchedModel::tokenCount(QString text)
{
    m_reference.takeCount(text);
    if (m_holdsCounts)
        m_heldCount = text;
    else
        answerCount(text, std::nullopt);
    return ScriptedModelService::tokenCount(std::move(text));
}

void WatchedModel::answerCount(const QString &text, const std::optional<QString> &failure)
{
    if (failure)
        m_reference.fail(*failure);
    else
        m_reference.answerCount(countTokens(text), contextSize());
}

std::unique_ptr<ModelReply> WatchedModel::respond(ReplyRequest request)
{
    m_reference.takeRequest(request, m_documentNames());
    QStringList tools;
    for (const ToolDefinition &tool : request.tools)
        tools.append(tool.name);
    auto reply = std::make_unique<WatchedReply>(m_reference, ScriptedModelService::respond(std::move(request)),
                                                std::move(tools));
    m_reply = reply.get();
    return reply;
}

void WatchedModel::holdCounts()
{
    m_holdsCounts = true;
    holdTokenCounts();
}

void WatchedModel::releaseCounts(const std::optional<QString> &failure)
{
    m_holdsCounts = false;
    if (const std::optional<QString> text = std::exchange(m_heldCount, std::nullopt))
        answerCount(*text, failure);
    setTokenCountFailure(failure);
    releaseTokenCounts();
    setTokenCountFailure(std::nullopt);
}

void WatchedModel::die()
{
    releaseCounts(deathNotice);
    if (m_reply)
        static_cast<WatchedReply *>(m_reply.data())->die();
    setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
}

} // namespace lumora::races
