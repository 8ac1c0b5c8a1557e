// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/extracttext.h"

#include "platform/process/helperanswer.h"
#include "platform/text/textrules.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace lumora {

namespace {

constexpr qint64 longestTextDocument = 64 * 1024 * 1024; // bytes

FileFailure failure(const char *description, const QString &why = {})
{
    const QString text = QCoreApplication::translate("lumora::Documents", description);
    return {why.isEmpty() ? text : text.arg(why)};
}

bool isPdf(const QString &path)
{
    return lowercased(QFileInfo(path).suffix()) == QLatin1String("pdf");
}

ExtractedText readUtf8(const QString &path)
{
    constexpr auto unreadable = QT_TRANSLATE_NOOP("lumora::Documents", "The document cannot be read: %1.");
    if (FileOutcome tooLong = refuseTooLong(path))
        return {.text = {}, .failure = tooLong};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {.text = {}, .failure = failure(unreadable, file.errorString())};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {.text = {}, .failure = failure(unreadable, file.errorString())};
    if (!bytes.isValidUtf8()) {
        return {.text = {},
                .failure = failure(QT_TRANSLATE_NOOP(
                    "lumora::Documents", "The document is not UTF-8 text. Save it as UTF-8 and add it again."))};
    }
    return {.text = QString::fromUtf8(bytes), .failure = std::nullopt};
}

FileFailure failure(HelperError::Cause cause)
{
    if (cause == HelperError::Cause::shortage) {
        return failure(QT_TRANSLATE_NOOP("lumora::Documents",
                                         "PDF files cannot be read now: the computer is short of memory, or too many "
                                         "programs run on it. Close some of them and add the document again."));
    }
    return failure(QT_TRANSLATE_NOOP("lumora::Documents",
                                     "PDF files cannot be read, because a part of this program cannot be started. "
                                     "Install the program again and add the document again."));
}

} // namespace

bool isTooLarge(const QString &path, const PdfTextReader &pdf)
{
    return isPdf(path) && QFileInfo(path).size() > pdf.limits.memoryBytes;
}

FileOutcome refuseTooLong(const QString &path)
{
    if (isPdf(path) || QFileInfo(path).size() <= longestTextDocument)
        return std::nullopt;
    return failure(QT_TRANSLATE_NOOP("lumora::Documents", "The document has more than 64 MB of text."));
}

ExtractedText extractText(const QString &path, const PdfTextReader &pdf, const std::stop_token &stop)
{
    if (!isPdf(path))
        return readUtf8(path);
    try {
        return {.text = pdf.text(path, stop), .failure = std::nullopt};
    } catch (const HelperError &error) {
        return {.text = {}, .failure = failure(error.cause())};
    }
}

} // namespace lumora
