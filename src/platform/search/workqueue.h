// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace lumora {

/// Does one piece of work after another, in the order in which they were added, on a thread of its own.
class WorkQueue
{
public:
    using Work = std::function<void()>;

    WorkQueue() = default;
    WorkQueue(const WorkQueue &) = delete;
    WorkQueue &operator=(const WorkQueue &) = delete;
    /// Waits until all work is done.
    ~WorkQueue();

    /// Any thread. The work must not throw. Throws std::system_error where no thread can be had for it.
    void add(Work work);

private:
    void run();

    std::mutex m_lock;
    std::condition_variable m_hasNews;
    std::deque<Work> m_waiting;
    bool m_isEnding = false;
    std::thread m_thread; ///< started with the first work
};

} // namespace lumora
