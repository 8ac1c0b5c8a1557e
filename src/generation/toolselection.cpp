// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/toolselection.h"

#include "platform/text/textrules.h"

#include <algorithm>

namespace lumora {

namespace {

/// As texts are compared here, however their accents are encoded.
QString comparable(const QString &text)
{
    return lowercased(text).normalized(QString::NormalizationForm_C);
}

template <typename Keywords>
bool containsAny(const QString &text, const Keywords &keywords)
{
    return std::ranges::any_of(keywords, [&text](QStringView keyword) { return text.contains(keyword); });
}

ToolSelection::ImageTool imageTool(const QString &text)
{
    if (containsAny(text, barcodeKeywords))
        return ToolSelection::ImageTool::barcodeReader;
    if (containsAny(text, ocrKeywords))
        return ToolSelection::ImageTool::textRecognition;
    return ToolSelection::ImageTool::none;
}

bool namesDocument(const QString &text, const QStringList &documentNames)
{
    return std::ranges::any_of(documentNames, [&text](const QString &name) { return text.contains(comparable(name)); });
}

} // namespace

ToolSelection selectToolsByKeyword(const QString &typedText, RequestImage image, const QStringList &documentNames)
{
    const QString text = comparable(typedText);
    ToolSelection selection;
    selection.currentDate = containsAny(text, dateToolKeywords);
    if (image == RequestImage::attached)
        selection.imageTool = imageTool(text);
    selection.documentSearch =
        !documentNames.isEmpty() && (containsAny(text, documentKeywords) || namesDocument(text, documentNames));
    return selection;
}

} // namespace lumora
