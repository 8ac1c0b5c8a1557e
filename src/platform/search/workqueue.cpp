// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/workqueue.h"

#include <utility>

namespace lumora {

WorkQueue::~WorkQueue()
{
    {
        const std::lock_guard lock(m_lock);
        m_isEnding = true;
    }
    m_hasNews.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void WorkQueue::add(Work work)
{
    {
        const std::lock_guard lock(m_lock);
        if (!m_thread.joinable())
            m_thread = std::thread(&WorkQueue::run, this);
        m_waiting.push_back(std::move(work));
    }
    m_hasNews.notify_one();
}

void WorkQueue::run()
{
    std::unique_lock lock(m_lock);
    while (true) {
        m_hasNews.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
        if (m_waiting.empty())
            return;
        {
            const Work work = std::exchange(m_waiting.front(), nullptr);
            m_waiting.pop_front();
            lock.unlock();
            work();
        } // what it holds ends here, without the lock
        lock.lock();
    }
}

} // namespace lumora
