// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/pendingcount.h"

#include "platform/model/errors.h"

#include <utility>

namespace lumora {

void PendingCount::finish(qint64 tokens)
{
    if (!isWaiting())
        return;
    m_state = tokens;
    m_news.wakeLater();
}

void PendingCount::fail(const QString &description)
{
    if (!isWaiting())
        return;
    m_state = Failure{description};
    m_news.wakeLater();
}

// Also where the count has ended: it may be that no event loop is left to say so.
void PendingCount::cancelNow()
{
    if (isWaiting())
        m_state = Cancelled{};
    m_news.wakeNow();
}

QCoro::Task<qint64> PendingCount::result(std::shared_ptr<PendingCount> count)
{
    while (count->isWaiting())
        co_await count->m_news;

    if (std::holds_alternative<Cancelled>(count->m_state))
        throw CancellationError();
    if (const auto *failure = std::get_if<Failure>(&count->m_state))
        throw ModelError(failure->description);
    co_return std::get<qint64>(count->m_state);
}

std::shared_ptr<PendingCount> PendingCounts::add()
{
    std::erase_if(m_counts, [](const auto &count) { return count.expired(); });
    auto count = std::make_shared<PendingCount>();
    m_counts.push_back(count);
    return count;
}

void PendingCounts::cancelNow()
{
    const auto counts = std::exchange(m_counts, {});
    for (const auto &count : counts) {
        if (const auto pending = count.lock())
            pending->cancelNow();
    }
}

} // namespace lumora
