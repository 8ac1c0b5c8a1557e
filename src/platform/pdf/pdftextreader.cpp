// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf/pdftextreader.h"

#include "platform/pdf/filedescriptor.h"
#include "platform/pdf/helperprocess.h"

#include <QByteArray>
#include <QFile>
#include <QLoggingCategory>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.pdf", QtWarningMsg)

using Clock = std::chrono::steady_clock;

/// Open where the path is that of a regular file with something in it, and not more than this.
FileDescriptor openedFile(const QString &path, qint64 largestSize)
{
    // Opening a pipe would wait for its writer; files take no notice of O_NONBLOCK.
    FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat facts
    {
    };
    const bool isReadable = file.isOpen() && ::fstat(file.number(), &facts) == 0 && S_ISREG(facts.st_mode) &&
                            facts.st_size > 0 && facts.st_size <= largestSize;
    return isReadable ? std::move(file) : FileDescriptor();
}

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

/// Empty where it is not UTF-8: then it is not the helper that speaks.
QString decoded(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString() : text;
}

QList<QByteArray> helperArguments(const PdfLimits &limits)
{
    // One second more than it gets by the clock: what is too slow ends here, and there only where this program is gone.
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(limits.time).count() + 1;
    return {QByteArray::number(limits.memoryBytes), QByteArray::number(qint64(seconds))};
}

} // namespace

QString PdfTextReader::text(const QString &path, const std::stop_token &stop) const
{
    const Clock::time_point deadline = Clock::now() + limits.time;
    const FileDescriptor file = openedFile(path, limits.memoryBytes);
    if (!file.isOpen() || stop.stop_requested())
        return {};
    HelperProcess process(helper, helperArguments(limits), file);
    if (process.startError() != 0) {
        qCWarning(log, "%ls cannot be started: %ls", qUtf16Printable(helper),
                  qUtf16Printable(qt_error_string(process.startError())));
        return {};
    }
    const std::optional<QByteArray> output = outputOf(process, deadline, limits.textBytes, stop);
    if (!output)
        return {};
    if (const std::optional<QString> failure = process.end()) {
        qCWarning(log, "%ls %ls", qUtf16Printable(helper), qUtf16Printable(*failure));
        return {};
    }
    return decoded(*output);
}

} // namespace lumora
