// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/sessionsetup.h"

#include "documents/documentlibrary.h"
#include "features/currentdatetool.h"
#include "features/documentsearchtool.h"
#include "generation/toolselection.h"
#include "platform/vision/imagetools.h"

namespace lumora {

namespace {

CurrentDateTool currentDateTool()
{
    return {.name = QStringLiteral("currentDate"),
            .description = QStringLiteral("Get the current local date and time. Use this when the user asks about "
                                          "today, now, or the current time.")};
}

QStringList names(const QList<ImportedDocument> &documents)
{
    QStringList result;
    for (const ImportedDocument &document : documents)
        result.append(document.name);
    return result;
}

} // namespace

QString sessionInstructions()
{
    return QStringLiteral(
        "You are a helpful desktop assistant. Answer the latest user message directly. If an OCR or barcode tool is "
        "available, call it before answering about text or codes in the attached image. If a document search tool is "
        "available, call it before answering from documents and cite the document title. Use the date tool for current "
        "date or time. You have no internet access. Keep answers clear and concise.");
}

ToolList selectTools(const QString &typedText, const std::optional<QString> &imageURL, const DocumentLibrary &library,
                     const ImageReader &images)
{
    const std::optional<DocumentSearchTool> documentSearch = searchTool(library);
    const RequestImage image = imageURL ? RequestImage::attached : RequestImage::absent;
    const ToolSelection selection =
        selectToolsByKeyword(typedText, image, documentSearch ? names(documentSearch->documents) : QStringList());
    ToolList tools;
    if (selection.currentDate)
        tools.append(makeTool(currentDateTool()));
    if (imageURL && selection.imageTool == ToolSelection::ImageTool::barcodeReader)
        tools.append(makeTool(barcodeReaderTool(*imageURL, images)));
    if (imageURL && selection.imageTool == ToolSelection::ImageTool::textRecognition)
        tools.append(makeTool(ocrTool(*imageURL, images)));
    if (documentSearch && selection.documentSearch)
        tools.append(makeTool(*documentSearch));
    return tools;
}

Prompt makePrompt(const QString &text, const std::optional<QString> &imageURL)
{
    Prompt prompt{.text = text, .attachments = {}};
    if (imageURL)
        prompt.attachments.append(Attachment(*imageURL).label(QStringLiteral("attached image")));
    return prompt;
}

} // namespace lumora
