// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/waitpoint.h"

#include <utility>

namespace lumora {

void WaitPoint::wakeLater()
{
    if (std::exchange(m_isWakePosted, true))
        return;
    QMetaObject::invokeMethod(this, &WaitPoint::wakeNow, Qt::QueuedConnection);
}

void WaitPoint::wakeNow()
{
    m_isWakePosted = false;
    // The last one woken may let go of this point.
    const std::vector<std::coroutine_handle<>> waiters = std::exchange(m_waiters, {});
    for (const std::coroutine_handle<> waiter : waiters)
        waiter.resume();
}

} // namespace lumora
