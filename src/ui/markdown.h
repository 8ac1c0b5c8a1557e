// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFlags>
#include <QList>
#include <QString>
#include <QUrl>

namespace lumora {

/// How a piece of a message looks beyond plain text.
enum class InlineStyle {
    emphasis = 1,
    strong = 2,
    strikethrough = 4,
    code = 8,
};
Q_DECLARE_FLAGS(InlineStyles, InlineStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(InlineStyles)

/// Text of one look.
struct MarkdownSpan
{
    QString text;
    InlineStyles styles = {};
    QUrl link = {}; ///< http, https or mailto; empty for text that leads nowhere

    bool operator==(const MarkdownSpan &) const = default;
};

/// One line of a message as its author broke it, with a text direction of its own.
struct MarkdownLine
{
    enum class Kind {
        text,
        heading,
        code,
        rule, ///< has no spans
    };

    Kind kind = Kind::text;
    int depth = 0;          ///< how many lists and quotes it stands in
    QString marker = {};    ///< of the first line of a list item, such as "•" or "2."
    bool continues = false; ///< belongs to the same paragraph as the line above
    QList<MarkdownSpan> spans = {};

    bool operator==(const MarkdownLine &) const = default;
};

/// Reads the Markdown of a message. HTML and images are text like any other, so that nothing in the result can load,
/// run or restyle anything. Any thread may ask.
QList<MarkdownLine> readMarkdown(const QString &markdown);

/// The lines of a text that is to be shown as it stands.
QList<MarkdownLine> readVerbatim(const QString &text);

} // namespace lumora
