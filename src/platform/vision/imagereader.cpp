// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/imagereader.h"

#include "platform/files/filedescriptor.h"
#include "platform/images/imagefile.h"
#include "platform/model/errors.h"
#include "platform/process/helperanswer.h"

#include <QCoreApplication>
#include <QLocale>

namespace lumora {

namespace {

constexpr qint64 mostMemory = qint64(3) << 30; // address space; the largest image takes a third of it
constexpr qint64 mostOutput = qint64(4) << 20;

/// It gets no environment, so what matters of it is said here.
QList<QByteArray> helperArguments(ImageReader::Wanted wanted, std::chrono::milliseconds time)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(time).count() + 1;
    QList<QByteArray> arguments{wanted == ImageReader::Wanted::text ? "text" : "barcodes",
                                QByteArray::number(mostMemory), QByteArray::number(qint64(seconds)),
                                qgetenv("TESSDATA_PREFIX")};
    for (const QString &language : QLocale::system().uiLanguages())
        arguments.append(language.toUtf8());
    return arguments;
}

ModelError failure(HelperError::Cause cause)
{
    if (cause == HelperError::Cause::shortage)
        return ModelError(QCoreApplication::translate(
            "LanguageModel", "The image cannot be read now: the computer is short of memory, or too many programs run "
                             "on it. Close some of them and ask again."));
    return ModelError(QCoreApplication::translate(
        "LanguageModel", "The image cannot be read, because a part of this program cannot be started. Install the "
                         "program again and ask again."));
}

/// Throws ModelError where no image can be read.
HelperAnswer answer(const HelperRequest &request, const FileDescriptor &file, const std::stop_token &stop)
{
    try {
        return answerOf(request, file, stop);
    } catch (const HelperError &error) {
        throw failure(error.cause());
    }
}

} // namespace

Reading ImageReader::read(const QString &imagePath, Wanted wanted, const std::stop_token &stop) const
{
    using Outcome = Reading::Outcome;
    const auto deadline = std::chrono::steady_clock::now() + time;
    const FileDescriptor file = openedFile(imagePath, imageLimits.fileBytes);
    if (!file.isOpen())
        return {Outcome::noImage, {}};
    const HelperAnswer said = answer({helper, helperArguments(wanted, time), deadline, mostOutput}, file, stop);
    switch (said.outcome) {
    case HelperAnswer::Outcome::complete:
        return decodedReading(said.output).value_or(Reading{Outcome::noImage, {}});
    case HelperAnswer::Outcome::failed:
        break;
    case HelperAnswer::Outcome::late:
        return {Outcome::late, {}};
    }
    return {Outcome::noImage, {}};
}

} // namespace lumora
