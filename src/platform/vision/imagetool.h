// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"
#include "platform/vision/imagereader.h"

#include <QString>
#include <QUuid>

namespace lumora {

/// The arguments of a tool that only has to be called: the image is known. An object without properties is what even a
/// small model cannot get wrong.
struct NoArguments
{
    struct PartiallyGenerated
    {
        QUuid id; ///< the content's generation identifier, or a new one

        static PartiallyGenerated fromGeneratedContent(const GeneratedContent &content);
    };

    static GenerationSchema generationSchema();
    /// Whatever the content holds is passed over.
    static NoArguments fromGeneratedContent(const GeneratedContent &content);
    GeneratedContent generatedContent() const;

    bool operator==(const NoArguments &) const = default;
};

/// What an image tool answers. nothing: the sentence for an image in which it found nothing. That is an answer like any
/// other, and so is that the image cannot be read. Blocks. Throws ModelError where the user has to do something first.
QString readForModel(const ImageReader &reader, const QString &imagePath, ImageReader::Wanted wanted,
                     const QString &nothing);

} // namespace lumora
