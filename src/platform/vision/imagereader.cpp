// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/imagereader.h"

#include "platform/files/filedescriptor.h"
#include "platform/images/imagefile.h"
#include "platform/model/errors.h"
#include "platform/process/helperanswer.h"

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

} // namespace

Reading ImageReader::read(const QString &imagePath, Wanted wanted, const std::stop_token &stop) const
{
    using Outcome = Reading::Outcome;
    const auto deadline = std::chrono::steady_clock::now() + time;
    const FileDescriptor file = openedFile(imagePath, imageLimits.fileBytes);
    if (!file.isOpen())
        return {Outcome::noImage, {}};
    const HelperAnswer answer = answerOf({helper, helperArguments(wanted, time), deadline, mostOutput}, file, stop);
    switch (answer.outcome) {
    case HelperAnswer::Outcome::complete:
        return decodedReading(answer.output).value_or(Reading{Outcome::noImage, {}});
    case HelperAnswer::Outcome::failed:
        break;
    case HelperAnswer::Outcome::late:
        return {Outcome::late, {}};
    case HelperAnswer::Outcome::unusable:
        throw ModelError(QStringLiteral("The image cannot be read, because a part of this program cannot be started. "
                                        "Install the program again and ask again."));
    }
    return {Outcome::noImage, {}};
}

} // namespace lumora
