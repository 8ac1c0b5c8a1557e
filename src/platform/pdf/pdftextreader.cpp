// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf/pdftextreader.h"

#include "platform/process/filedescriptor.h"
#include "platform/process/helperoutput.h"
#include "platform/process/helperprocess.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QStringDecoder>

#include <optional>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.pdf", QtWarningMsg)

using Clock = std::chrono::steady_clock;

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
