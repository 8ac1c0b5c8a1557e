// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/sessionsetup.h"

#include "features/currentdatetool.h"
#include "generation/toolselection.h"

namespace lumora {

QString sessionInstructions()
{
    return QStringLiteral(
        "You are a helpful desktop assistant. Answer the latest user message directly. If an OCR or barcode tool is "
        "available, call it before answering about text or codes in the attached image. If a document search tool is "
        "available, call it before answering from documents and cite the document title. Use the date tool for current "
        "date or time. You have no internet access. Keep answers clear and concise.");
}

ToolList selectTools(const QString &typedText, const std::optional<QString> &imageURL)
{
    const RequestImage image = imageURL ? RequestImage::attached : RequestImage::absent;
    const ToolSelection selection = selectToolsByKeyword(typedText, image, {});
    ToolList tools;
    if (selection.currentDate) {
        tools.append(makeTool(CurrentDateTool{
            .name = QStringLiteral("currentDate"),
            .description = QStringLiteral("Get the current local date and time. Use this when the user asks about "
                                          "today, now, or the current time."),
        }));
    }
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
