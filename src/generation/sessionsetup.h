// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/prompt.h"
#include "platform/model/tool.h"
#include "platform/vision/imagereader.h"

#include <QString>

#include <optional>

namespace lumora {

class DocumentLibrary;

/// What every session is told first.
QString sessionInstructions();

/// The tools for a request, in the order in which the model gets them: date, image, documents.
/// typedText: the trimmed draft, not what stands in for an empty one.
ToolList selectTools(const QString &typedText, const std::optional<QString> &imageURL, const DocumentLibrary &library,
                     const ImageReader &images);

/// The fitted text, followed by the image where there is one.
Prompt makePrompt(const QString &text, const std::optional<QString> &imageURL);

} // namespace lumora
