// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/currentdatetool.h"

#include "platform/text/dates.h"

#include <QDateTime>

namespace lumora {

namespace {

constexpr QStringView questionProperty = u"question";

} // namespace

CurrentDateTool::Arguments::PartiallyGenerated
CurrentDateTool::Arguments::PartiallyGenerated::fromGeneratedContent(const GeneratedContent &content)
{
    return {.id = content.id().value_or(QUuid::createUuid()), .question = content.optionalText(questionProperty)};
}

GenerationSchema CurrentDateTool::Arguments::generationSchema()
{
    return {
        .typeName = QStringLiteral("Arguments"),
        .properties = {{questionProperty.toString(),
                        QStringLiteral("The user's question about the current date or time"),
                        GenerationSchema::Type::text}},
    };
}

CurrentDateTool::Arguments CurrentDateTool::Arguments::fromGeneratedContent(const GeneratedContent &content)
{
    return {.question = content.text(questionProperty)};
}

GeneratedContent CurrentDateTool::Arguments::generatedContent() const
{
    return GeneratedContent::Properties{{questionProperty.toString(), question}};
}

QString CurrentDateTool::call(const Arguments &) const
{
    return fullDateTime(double(QDateTime::currentMSecsSinceEpoch()));
}

} // namespace lumora
