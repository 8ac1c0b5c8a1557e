// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/inbox.h"

#include <utility>

namespace lumora::service {

namespace {

std::int64_t idOf(const wire::Request &request)
{
    return std::visit([](const auto &message) { return message.id; }, request);
}

} // namespace

void Inbox::post(wire::Request request)
{
    {
        const std::lock_guard lock(m_mutex);
        if (const auto *const cancelled = std::get_if<wire::Cancel>(&request))
            cancel(cancelled->id);
        else if (auto *const output = std::get_if<wire::ToolOutput>(&request))
            keepOutput(std::move(*output));
        else
            m_waiting.push_back({std::move(request), std::stop_source()});
    }
    m_changed.notify_all();
}

void Inbox::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_currentStop.request_stop();
    }
    m_changed.notify_all();
}

std::optional<Job> Inbox::next()
{
    std::unique_lock lock(m_mutex);
    m_currentID.reset();
    m_outputs.clear();
    m_changed.wait(lock, [this] { return m_closed || !m_waiting.empty(); });
    if (m_closed)
        return std::nullopt;
    Entry entry = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_currentID = idOf(entry.request);
    m_currentStop = entry.stop;
    return Job{std::move(entry.request), entry.stop.get_token()};
}

std::optional<std::string> Inbox::toolOutput(const std::string &call)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_currentStop.stop_requested() || m_outputs.contains(call); });
    if (m_currentStop.stop_requested())
        return std::nullopt;
    return std::move(m_outputs.extract(call).mapped());
}

void Inbox::cancel(std::int64_t id)
{
    if (m_currentID == id)
        m_currentStop.request_stop();
    for (const Entry &entry : m_waiting)
        if (idOf(entry.request) == id)
            std::stop_source(entry.stop).request_stop();
}

// An output that comes too late, or for a call that nobody made, is nobody's.
void Inbox::keepOutput(wire::ToolOutput output)
{
    if (m_currentID == output.id)
        m_outputs.insert_or_assign(std::move(output.call), std::move(output.output));
}

} // namespace lumora::service
