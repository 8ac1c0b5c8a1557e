// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/imagetool.h"

namespace lumora {

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

QString unreadableImageAnswer()
{
    return QStringLiteral("The attached image could not be read: it is missing, damaged, too large, or not an image.");
}

} // namespace lumora
