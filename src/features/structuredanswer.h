// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace lumora {

/// The whole answer that the model is asked for in structured mode.
struct StructuredAnswer
{
    QString title;
    QString summary;
    QStringList keyPoints;
    QStringList nextSteps;

    /// What has been generated so far. A field is absent until the model has produced it.
    struct PartiallyGenerated
    {
        QUuid id; ///< the content's generation identifier, or a new one
        std::optional<QString> title;
        std::optional<QString> summary;
        std::optional<QStringList> keyPoints;
        std::optional<QStringList> nextSteps;

        /// Throws ConversionError where a property is there, but of another type.
        static PartiallyGenerated fromGeneratedContent(const GeneratedContent &content);
    };

    /// Four required properties, in the order of the fields.
    static GenerationSchema generationSchema();
    /// Throws ConversionError where a property is missing or of another type.
    static StructuredAnswer fromGeneratedContent(const GeneratedContent &content);
    GeneratedContent generatedContent() const;

    bool operator==(const StructuredAnswer &) const = default;
};

} // namespace lumora
