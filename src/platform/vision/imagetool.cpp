// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/imagetool.h"

#include "platform/model/errors.h"

#include <QCoreApplication>

#include <stop_token>

namespace lumora {

namespace {

std::stop_source &endOfProgramSource()
{
    static std::stop_source source;
    return source;
}

/// The program waits for its worker threads when it ends, and nobody waits for their answers then.
std::stop_token endOfProgram()
{
    [[maybe_unused]] static const bool isTold = (qAddPostRoutine([] { endOfProgramSource().request_stop(); }), true);
    return endOfProgramSource().get_token();
}

} // namespace

NoArguments::PartiallyGenerated NoArguments::PartiallyGenerated::fromGeneratedContent(const GeneratedContent &content)
{
    return {.id = content.id().value_or(QUuid::createUuid())};
}

GenerationSchema NoArguments::generationSchema()
{
    return {.typeName = QStringLiteral("Arguments"), .properties = {}};
}

NoArguments NoArguments::fromGeneratedContent(const GeneratedContent &)
{
    return {};
}

GeneratedContent NoArguments::generatedContent() const
{
    return GeneratedContent::Properties();
}

QString readForModel(const ImageReader &reader, const QString &imagePath, ImageReader::Wanted wanted,
                     const QString &nothing)
{
    const Reading reading = reader.read(imagePath, wanted, endOfProgram());
    switch (reading.outcome) {
    case Reading::Outcome::everything:
        return reading.content;
    case Reading::Outcome::part:
        return reading.content + QStringLiteral("\n\n(The rest of the attached image could not be read in time.)");
    case Reading::Outcome::nothing:
        return nothing;
    case Reading::Outcome::late:
        return QStringLiteral("The attached image could not be read in time.");
    case Reading::Outcome::noLanguage:
        throw ModelError(
            QStringLiteral("Text in images cannot be read, because no language data for text recognition is installed. "
                           "Install a package such as tesseract-ocr-eng and ask again."));
    case Reading::Outcome::noImage:
        break;
    }
    return QStringLiteral("The attached image could not be read: it is missing, damaged, too large, or not an image.");
}

} // namespace lumora
