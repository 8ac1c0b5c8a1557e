// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/spokentext.h"

#include "ui/documentwriter.h"
#include "ui/selectedtext.h"

#include <QFont>
#include <QTextDocument>

namespace lumora {

namespace {

QString withoutMarks(const QString &markdown)
{
    QTextDocument document;
    DocumentWriter writer(&document);
    QFont font;
    font.setPixelSize(14); // any; nobody sees it
    writer.setLook({.font = font});
    writer.write(readMarkdown(markdown));
    return selectedText(document, writer.lines(), 0, document.characterCount());
}

} // namespace

QString spokenText(const ChatMessage &message)
{
    QStringList parts = {message.text.isEmpty() ? QString() : withoutMarks(message.text)};
    if (message.card)
        parts << message.card->title << message.card->summary << message.card->keyPoints << message.card->nextSteps;
    parts.removeAll(QString());
    return parts.join(u'\n');
}

} // namespace lumora
