// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace lumora {

/// A property of the type text, as a model is told of it.
struct TextProperty
{
    QStringView name;
    QStringView description;
};

/// The arguments of a tool that is asked with one text.
template <const TextProperty &property>
struct TextArgument
{
    QString text;

    struct PartiallyGenerated
    {
        QUuid id;                    ///< the content's generation identifier, or a new one
        std::optional<QString> text; ///< absent until the model has produced it

        static PartiallyGenerated fromGeneratedContent(const GeneratedContent &content)
        {
            return {.id = content.id().value_or(QUuid::createUuid()), .text = content.optionalText(property.name)};
        }
    };

    static GenerationSchema generationSchema()
    {
        return {.typeName = QStringLiteral("Arguments"),
                .properties = {{property.name.toString(), property.description.toString()}}};
    }
    static TextArgument fromGeneratedContent(const GeneratedContent &content)
    {
        return {.text = content.text(property.name)};
    }
    GeneratedContent generatedContent() const { return GeneratedContent::Properties{{property.name.toString(), text}}; }

    bool operator==(const TextArgument &) const = default;
};

} // namespace lumora
