// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/structuredanswer.h"

namespace lumora {

namespace {

constexpr QStringView titleProperty = u"title";
constexpr QStringView summaryProperty = u"summary";
constexpr QStringView keyPointsProperty = u"keyPoints";
constexpr QStringView nextStepsProperty = u"nextSteps";

} // namespace

GenerationSchema StructuredAnswer::generationSchema()
{
    using Type = GenerationSchema::Type;
    return {
        .typeName = QStringLiteral("StructuredAnswer"),
        .properties =
            {
                {titleProperty.toString(), QStringLiteral("A short descriptive title"), Type::text},
                {summaryProperty.toString(), QStringLiteral("A concise answer to the user's request"), Type::text},
                {keyPointsProperty.toString(), QStringLiteral("The most important facts or points"), Type::listOfText},
                {nextStepsProperty.toString(), QStringLiteral("Useful next actions, if any"), Type::listOfText},
            },
    };
}

StructuredAnswer StructuredAnswer::fromGeneratedContent(const GeneratedContent &content)
{
    return {
        .title = content.text(titleProperty),
        .summary = content.text(summaryProperty),
        .keyPoints = content.texts(keyPointsProperty),
        .nextSteps = content.texts(nextStepsProperty),
    };
}

GeneratedContent StructuredAnswer::generatedContent() const
{
    return GeneratedContent::Properties{
        {titleProperty.toString(), title},
        {summaryProperty.toString(), summary},
        {keyPointsProperty.toString(), keyPoints},
        {nextStepsProperty.toString(), nextSteps},
    };
}

StructuredAnswer::PartiallyGenerated
StructuredAnswer::PartiallyGenerated::fromGeneratedContent(const GeneratedContent &content)
{
    return {
        .id = content.id().value_or(QUuid::createUuid()),
        .title = content.optionalText(titleProperty),
        .summary = content.optionalText(summaryProperty),
        .keyPoints = content.optionalTexts(keyPointsProperty),
        .nextSteps = content.optionalTexts(nextStepsProperty),
    };
}

} // namespace lumora
