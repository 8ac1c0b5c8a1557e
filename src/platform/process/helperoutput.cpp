// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/process/helperoutput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace lumora {

namespace {

using Clock = std::chrono::steady_clock;

/// Something for poll that can be read from once stop was requested.
class StopEvent
{
public:
    explicit StopEvent(const std::stop_token &stop)
        : m_event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
        , m_callback(stop, Wake{m_event.number()})
    {
    }
    int number() const { return m_event.number(); }

private:
    struct Wake
    {
        int event;
        void operator()() const { ::eventfd_write(event, 1); }
    };

    FileDescriptor m_event;
    std::stop_callback<Wake> m_callback;
};

/// Rounded up, so that a wait never ends just before the time has come.
int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
}

enum class Read { something, end };

Read readMore(const FileDescriptor &output, QByteArray &bytes)
{
    std::array<char, 65536> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    const ssize_t count = ::read(output.number(), piece.data(), piece.size());
    bytes.append(piece.data(), std::max<ssize_t>(count, 0));
    return count > 0 || (count < 0 && errno == EINTR) ? Read::something : Read::end;
}

} // namespace

std::optional<QByteArray> outputOf(const HelperProcess &process, Clock::time_point deadline, qint64 mostBytes,
                                   const std::stop_token &stop)
{
    const StopEvent stopEvent(stop);
    std::array<pollfd, 3> events{{{process.output().number(), POLLIN, 0},
                                  {process.endEvent().number(), POLLIN, 0},
                                  {stopEvent.number(), POLLIN, 0}}};
    auto &[output, end, stopped] = events;
    QByteArray bytes;
    for (;;) {
        const int wait = millisecondsUntil(deadline);
        if (wait == 0 || stop.stop_requested())
            return std::nullopt;
        if (::poll(events.data(), events.size(), wait) < 0)
            continue; // a signal's handler has run
        if (output.revents == 0 && end.revents != 0)
            return bytes;
        if (output.revents != 0 && readMore(process.output(), bytes) == Read::end)
            output.fd = -1;
        if (bytes.size() > mostBytes)
            return std::nullopt;
    }
}

} // namespace lumora
