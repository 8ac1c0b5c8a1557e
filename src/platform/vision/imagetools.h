// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"
#include "platform/vision/imagereader.h"

#include <QString>
#include <QUuid>

#include <stop_token>

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

/// Tells the model what stands in an image file.
struct ImageTool
{
    using Arguments = NoArguments;

    QString name;
    QString description;
    ImageReader::Wanted wanted = ImageReader::Wanted::text;
    QString imagePath; ///< absolute
    ImageReader reader;

    /// That nothing was found, or that the image cannot be read, is an answer like any other. Blocks. Throws ModelError
    /// where the user has to do something first.
    QString call(const Arguments &arguments, const std::stop_token &stop) const;
};

/// Tells what is written in the image: the text alone, its lines and paragraphs kept.
ImageTool ocrTool(const QString &imagePath, const ImageReader &reader);

/// Tells what the codes in the image hold: one line for each, its type, a colon and its content. A content of several
/// lines begins on a line of its own.
ImageTool barcodeReaderTool(const QString &imagePath, const ImageReader &reader);

} // namespace lumora
