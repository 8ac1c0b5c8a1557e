// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace lumora::service {

/// Joins pieces of text that come faster than anybody reads. The first goes out at once; after it, at most one every
/// 33 ms, since each wakes the window, beside which the engine computes on all cores. What waits goes out with the next
/// piece that is due, or with flush().
class TextPacer
{
public:
    using Clock = std::chrono::steady_clock;

    explicit TextPacer(std::function<void(std::string piece)> send,
                       std::function<Clock::time_point()> now = &Clock::now);

    void add(std::string_view text);
    void flush();

private:
    std::function<void(std::string)> m_send;
    std::function<Clock::time_point()> m_now;
    std::string m_waiting;
    Clock::time_point m_nextDue; // the clock's beginning until something was sent
};

} // namespace lumora::service
