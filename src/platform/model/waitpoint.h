// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <qcoro/coroutine.h>

#include <vector>

namespace lumora {

/// Where coroutines of the main thread wait for news: co_await it. Being woken says only that something may have
/// changed, so look, and wait again. Who waits keeps the point alive.
class WaitPoint : public QObject
{
    Q_OBJECT

public:
    /// One coroutine's wait.
    class Wait
    {
    public:
        explicit Wait(WaitPoint &point)
            : m_point(point)
        {
        }

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) { m_point.m_waiters.push_back(waiter); }
        void await_resume() const noexcept {}

    private:
        WaitPoint &m_point;
    };

    using QObject::QObject;

    Wait operator co_await() { return Wait(*this); }

    /// Wakes from the event loop, once for any number of calls until then.
    void wakeLater();

    /// Wakes before it returns; the caller must survive whatever the woken do.
    void wakeNow();

private:
    std::vector<std::coroutine_handle<>> m_waiters;
    bool m_isWakePosted = false;
};

} // namespace lumora
