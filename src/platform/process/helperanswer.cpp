// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/process/helperanswer.h"

#include "platform/process/helperprocess.h"
#include "platform/process/helperstatus.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.helper", QtWarningMsg)

using Clock = std::chrono::steady_clock;
using Outcome = HelperAnswer::Outcome;

/// How the system's loader ends a program whose libraries it does not find.
constexpr int notLoaded = 127;

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

/// All that the helper writes until it has ended; nothing where that is too much or takes too long, or on stop.
std::optional<QByteArray> outputOf(const HelperProcess &process, const HelperRequest &request,
                                   const std::stop_token &stop)
{
    const StopEvent stopEvent(stop);
    std::array<pollfd, 3> events{{{process.output().number(), POLLIN, 0},
                                  {process.endEvent().number(), POLLIN, 0},
                                  {stopEvent.number(), POLLIN, 0}}};
    auto &[output, end, stopped] = events;
    QByteArray bytes;
    for (;;) {
        const int wait = millisecondsUntil(request.deadline);
        if (wait == 0 || stop.stop_requested())
            return std::nullopt;
        if (::poll(events.data(), events.size(), wait) < 0)
            continue; // a signal's handler has run
        if (output.revents == 0 && end.revents != 0)
            return bytes;
        if (output.revents != 0 && readMore(process.output(), bytes) == Read::end)
            output.fd = -1;
        if (bytes.size() > request.mostBytes)
            return std::nullopt;
    }
}

Outcome outcomeOf(const QString &program, int status)
{
    if (WIFSIGNALED(status)) {
        qCWarning(log, "%ls ended by signal %d", qUtf16Printable(program), WTERMSIG(status));
        return Outcome::failed;
    }
    if (WEXITSTATUS(status) == HelperStatus::complete)
        return Outcome::complete;
    qCWarning(log, "%ls ended with status %d", qUtf16Printable(program), WEXITSTATUS(status));
    if (WEXITSTATUS(status) == HelperStatus::unable || WEXITSTATUS(status) == notLoaded)
        throw HelperError(HelperError::Cause::installation);
    return Outcome::failed;
}

HelperError::Cause causeOf(int startError)
{
    const bool isShortage =
        startError == EAGAIN || startError == ENOMEM || startError == EMFILE || startError == ENFILE;
    return isShortage ? HelperError::Cause::shortage : HelperError::Cause::installation;
}

} // namespace

HelperAnswer answerOf(const HelperRequest &request, const FileDescriptor &file, const std::stop_token &stop)
{
    HelperProcess process(request.program, request.arguments, file);
    if (process.startError() != 0) {
        qCWarning(log, "%ls cannot be started: %ls", qUtf16Printable(request.program),
                  qUtf16Printable(qt_error_string(process.startError())));
        throw HelperError(causeOf(process.startError()));
    }
    std::optional<QByteArray> output = outputOf(process, request, stop);
    if (!output)
        return {Outcome::late, {}};
    return {outcomeOf(request.program, process.end()), std::move(*output)};
}

} // namespace lumora
