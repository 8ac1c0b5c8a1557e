// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/vision/imagetool.h"

#include <QString>

namespace lumora {

/// Tells the model what is written in an image file: the text alone, its lines and paragraphs kept.
struct OCRTool
{
    using Arguments = NoArguments;

    static QString defaultName();
    static QString defaultDescription();

    QString name = defaultName();
    QString description = defaultDescription();
    QString imagePath; ///< absolute

    /// That there is no text, or no image that can be read, is an answer like any other. Blocks, for half a minute at
    /// most; what has been read until then is the answer. Throws ModelError where no language data is installed.
    QString call(const Arguments &arguments) const;
};

} // namespace lumora
