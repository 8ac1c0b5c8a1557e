// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/waitpoint.h"

#include <QString>
#include <qcoro/qcorotask.h>

#include <memory>
#include <variant>
#include <vector>

namespace lumora {

/// A token count that somebody waits for. Used on the main thread; the first ending stands.
class PendingCount
{
public:
    /// From the event loop.
    void finish(qint64 tokens);
    void fail(const QString &description);

    /// Before it returns: for a service that is being destroyed.
    void cancelNow();

    /// Throws ModelError, CancellationError.
    static QCoro::Task<qint64> result(std::shared_ptr<PendingCount> count);

private:
    struct Waiting
    {
    };
    struct Failure
    {
        QString description;
    };
    struct Cancelled
    {
    };

    bool isWaiting() const { return std::holds_alternative<Waiting>(m_state); }

    std::variant<Waiting, qint64, Failure, Cancelled> m_state;
    WaitPoint m_news;
};

/// The counts of one service that somebody may still wait for.
class PendingCounts
{
public:
    std::shared_ptr<PendingCount> add();

    /// Ends every wait before it returns: for a service that is being destroyed.
    void cancelNow();

private:
    std::vector<std::weak_ptr<PendingCount>> m_counts;
};

} // namespace lumora
