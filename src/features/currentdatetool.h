// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace lumora {

/// Tells the model the current local date and time. Reads nothing but the clock and the user's regional settings.
struct CurrentDateTool
{
    QString name;
    QString description;

    struct Arguments
    {
        QString question;

        struct PartiallyGenerated
        {
            QUuid id; ///< the content's generation identifier, or a new one
            std::optional<QString> question;

            static PartiallyGenerated fromGeneratedContent(const GeneratedContent &content);
        };

        static GenerationSchema generationSchema();
        static Arguments fromGeneratedContent(const GeneratedContent &content);
        GeneratedContent generatedContent() const;

        bool operator==(const Arguments &) const = default;
    };

    /// The current instant in full, as the user's locale writes it, and nothing else. The question plays no role in it.
    QString call(const Arguments &arguments) const;
};

} // namespace lumora
