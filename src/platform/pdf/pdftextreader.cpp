// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf/pdftextreader.h"

#include "platform/files/filedescriptor.h"
#include "platform/process/helperanswer.h"

#include <QByteArray>
#include <QStringDecoder>

namespace lumora {

namespace {

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
    const auto deadline = std::chrono::steady_clock::now() + limits.time;
    const FileDescriptor file = openedFile(path, limits.memoryBytes);
    if (!file.isOpen() || stop.stop_requested())
        return {};
    const HelperAnswer answer = answerOf({helper, helperArguments(limits), deadline, limits.textBytes}, file, stop);
    return answer.outcome == HelperAnswer::Outcome::complete ? decoded(answer.output) : QString();
}

} // namespace lumora
