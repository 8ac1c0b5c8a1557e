// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/scripted/scriptedmodelservice.h"
#include "races/storereference.h"

namespace lumora::races {

/// A scripted model that tells the reference what it is asked and what it says, and that can die.
class WatchedModel final : public ScriptedModelService
{
public:
    using Names = std::function<QStringList()>;

    /// documentNames: those of the library at this moment.
    WatchedModel(StoreReference &reference, Names documentNames, Writer writer);

    QCoro::Task<qint64> tokenCount(QString text) override;
    std::unique_ptr<ModelReply> respond(ReplyRequest request) override;

    void holdCounts();
    /// Answers them, with this failure where there is one.
    void releaseCounts(const std::optional<QString> &failure = std::nullopt);
    bool isWaiting() const { return m_heldCount.has_value() || isHolding(); }
    /// The user has stopped what it was asked for.
    void forget() { m_heldCount.reset(); }

    /// As when the service's process ends: all that it was asked fails, and it is unavailable.
    void die();

private:
    void answerCount(const QString &text, const std::optional<QString> &failure);

    StoreReference &m_reference;
    Names m_documentNames;
    QPointer<ModelReply> m_reply;
    std::optional<QString> m_heldCount; ///< the text
    bool m_holdsCounts = false;
};

} // namespace lumora::races
