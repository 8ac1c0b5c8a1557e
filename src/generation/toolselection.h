// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace lumora {

// The words that call for each tool. One for a barcode goes before one for text.
inline constexpr std::array<QStringView, 4> dateToolKeywords = {u"today", u"current date", u"current time",
                                                                u"what time"};
inline constexpr std::array<QStringView, 3> barcodeKeywords = {u"barcode", u"qr code", u"qr-code"};
inline constexpr std::array<QStringView, 4> ocrKeywords = {u"read", u"text", u"ocr", u"word"};
inline constexpr std::array<QStringView, 4> documentKeywords = {u"document", u"file", u"pdf", u"notes"};

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

/// Looks for keywords anywhere in the lowercased text, inside longer words too, however accents are encoded.
/// documentNames: of the documents that can be searched; without any there is no document search, and the name of one
/// calls for it like a keyword.
ToolSelection selectToolsByKeyword(const QString &typedText, RequestImage image, const QStringList &documentNames);

} // namespace lumora
