// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/generatedcontent.h"

#include "features/structuredanswer.h"
#include "fuzz/fuzztarget.h"
#include "platform/model/errors.h"
#include "platform/model/generationschema.h"

#include <QJsonDocument>

#include <optional>

using namespace lumora;

namespace {

/// Nothing where it cannot be read, which is said by one kind of exception.
template <typename Read>
auto attempt(const Read &read) -> std::optional<decltype(read())>
{
    try {
        return read();
    } catch (const ConversionError &) {
        return std::nullopt;
    }
}

} // namespace

void lumora::fuzz::tryInput(std::string_view input)
{
    const QByteArray json(input.data(), qsizetype(input.size()));
    const GenerationSchema schema{QString::fromUtf8(json), {{QString::fromUtf8(json), QString::fromLatin1(json)}}};
    require(QJsonDocument::fromJson(schema.toJson()).isObject(), "A schema is not JSON.");

    const auto content = attempt([&] { return GeneratedContent::fromJson(json); });
    if (!content)
        return;
    require(GeneratedContent::fromJson(content->toJson()) == *content, "Content reads as another one once written.");
    const auto part = attempt([&] { return StructuredAnswer::PartiallyGenerated::fromGeneratedContent(*content); });
    const auto answer = attempt([&] { return StructuredAnswer::fromGeneratedContent(*content); });
    if (!answer)
        return;
    require(StructuredAnswer::fromGeneratedContent(answer->generatedContent()) == *answer, "An answer changes.");
    require(part && part->title == answer->title && part->nextSteps == answer->nextSteps,
            "What is whole cannot be read as a part.");
}
