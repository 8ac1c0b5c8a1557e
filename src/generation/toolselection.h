// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace lumora {

/// The tools that a request's words call for.
struct ToolSelection
{
    enum class ImageTool {
        none,
        barcodeReader,
        textRecognition,
    };

    bool currentDate = false;
    ImageTool imageTool = ImageTool::none;
    bool documentSearch = false;

    bool operator==(const ToolSelection &) const = default;
};

enum class RequestImage {
    absent,
    attached,
};

/// Looks for keywords anywhere in the lowercased text, inside longer words too. documentNames: of the documents that
/// can be searched; without any there is no document search, and the name of one calls for it like a keyword.
ToolSelection selectToolsByKeyword(const QString &typedText, RequestImage image, const QStringList &documentNames);

} // namespace lumora
