// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/messages.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>

namespace lumora::service {

/// A request that is to be worked on, and the way to learn that it was cancelled.
struct Job
{
    wire::Request request;
    std::stop_token stop;
};

/// Where requests wait for their turn. One thread posts them as they come, another works on them one after the other;
/// cancelling a request and giving a tool's output take effect at once.
class Inbox
{
public:
    void post(wire::Request request);

    /// No more requests are taken on: next() gives nothing from here on, and the job that runs is cancelled.
    void close();

    /// Waits for the next job, whose predecessor is over now. A cancelled one comes, too, to be answered.
    std::optional<Job> next();

    /// Waits for the output of a call that the current job has made. Nothing where the job was cancelled.
    std::optional<std::string> toolOutput(const std::string &call);

private:
    struct Entry
    {
        wire::Request request;
        std::stop_source stop;
    };

    void cancel(std::int64_t id);
    void keepOutput(wire::ToolOutput output);

    std::mutex m_mutex; // guards everything below
    std::condition_variable m_changed;
    std::deque<Entry> m_waiting;
    std::optional<std::int64_t> m_currentID;
    std::stop_source m_currentStop;
    std::map<std::string, std::string> m_outputs; // of the current job's calls
    bool m_closed = false;
};

} // namespace lumora::service
