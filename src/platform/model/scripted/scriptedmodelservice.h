// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"
#include "platform/model/pendingcount.h"
#include "platform/model/scripted/script.h"

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace lumora {

class ScriptedReply;

/// A language model that says what it is told to say. Available from the start, with a context of 4096 tokens and a
/// token for every four UTF-16 units begun.
class ScriptedModelService : public ModelService
{
    Q_OBJECT

public:
    using Writer = std::function<Script(const ReplyRequest &)>;
    using TokenCounter = std::function<qint64(const QString &)>;

    /// writer: what the replies say that no script was queued for; without one, "Scripted reply.".
    explicit ScriptedModelService(Writer writer = {}, QObject *parent = nullptr);
    ~ScriptedModelService() override;

    Availability availability() override;
    qint64 contextSize() const override;
    QCoro::Task<qint64> tokenCount(QString text) override;
    std::unique_ptr<ModelReply> respond(ReplyRequest request) override;

    /// The next reply that nothing is queued for yet.
    void enqueue(const Script &script);
    /// Emits availabilityChanged where it changes.
    void setAvailability(Availability availability);
    void setContextSize(qint64 tokens);
    void setTokenCounter(TokenCounter counter);
    /// Every token count fails with this until it is set to nothing.
    void setTokenCountFailure(std::optional<QString> description);

    /// Token counts wait, until they are held no more.
    void holdTokenCounts();
    void releaseTokenCounts();
    /// Lets every reply that waits at a Script::Hold go on.
    void release();

    /// What was asked, in order.
    const QList<ReplyRequest> &requests() const { return m_requests; }
    const QStringList &countedTexts() const { return m_countedTexts; }
    int availabilityChecks() const { return m_availabilityChecks; }
    /// Replies that were cancelled, or dropped, before their end.
    int cancelledReplies() const { return m_cancelledReplies; }
    bool isHolding() const;

    qint64 countTokens(const QString &text) const;
    void noteCancelled();

private:
    struct HeldCount
    {
        QString text;
        std::shared_ptr<PendingCount> pending;
    };

    Script nextScript(const ReplyRequest &request);
    void answer(const HeldCount &count) const;

    Writer m_writer;
    TokenCounter m_counter;
    Availability m_availability = Availability::available();
    qint64 m_contextSize = 4096;
    std::optional<QString> m_countFailure;
    bool m_holdsCounts = false;
    PendingCounts m_counts;
    std::vector<HeldCount> m_heldCounts;
    QList<QPointer<ScriptedReply>> m_replies;
    QList<Script> m_queue;
    QList<ReplyRequest> m_requests;
    QStringList m_countedTexts;
    int m_availabilityChecks = 0;
    int m_cancelledReplies = 0;
};

} // namespace lumora
