// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/textpacer.h"

#include <utility>

namespace lumora::service {

namespace {

constexpr std::chrono::milliseconds interval{33}; // thirty a second

} // namespace

TextPacer::TextPacer(std::function<void(std::string)> send, std::function<Clock::time_point()> now)
    : m_send(std::move(send))
    , m_now(std::move(now))
{
}

void TextPacer::add(std::string_view text)
{
    m_waiting += text;
    if (m_now() >= m_nextDue)
        flush();
}

void TextPacer::flush()
{
    if (m_waiting.empty())
        return;
    m_send(std::exchange(m_waiting, {}));
    m_nextDue = m_now() + interval;
}

} // namespace lumora::service
