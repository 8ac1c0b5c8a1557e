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

struct MarkdownCell
{
    QList<MarkdownSpan> spans;
    Qt::Alignment alignment = {}; ///< horizontal; none follows the direction of the text

    bool operator==(const MarkdownCell &) const = default;
};

/// The first row is the heading; all have as many cells.
using MarkdownTable = QList<QList<MarkdownCell>>;

/// One line of a message as its author broke it, with a text direction of its own; or a whole table.
struct MarkdownLine
{
    enum class Kind {
        text,
        heading,
        code,
        rule,  ///< has no spans
        table, ///< nor has this
    };

    Kind kind = Kind::text;
    int level = 0;       ///< of a heading, from 1
    int depth = 0;       ///< how many lists and quotes it stands in
    quint32 quotes = 0;  ///< which of them are quotes, as bits, the outermost first; deeper ones than 32 are left out
    QString marker = {}; ///< of the first line of a list item, such as "•" or "2."
    bool continues = false; ///< belongs to the same paragraph, or the same code, as the line above
    bool isTight = false;   ///< stands closer to the line above than a paragraph does
    bool isLast = false;    ///< of its code
    QList<MarkdownSpan> spans = {};
    MarkdownTable table = {};

    bool operator==(const MarkdownLine &) const = default;
};

/// Reads the Markdown of a message. HTML and images are text like any other, so that nothing in the result can load,
/// run or restyle anything. Any thread may ask.
QList<MarkdownLine> readMarkdown(const QString &markdown);

/// The lines of a text that is to be shown as it stands.
QList<MarkdownLine> readVerbatim(const QString &text);

} // namespace lumora
