// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/markdown.h"

#include <QColor>
#include <QFont>
#include <QTextBlockFormat>
#include <QTextCharFormat>

namespace lumora {

/// What a message's text looks like.
struct TextLook
{
    QFont font; ///< of plain text, with its size in logical pixels
    QColor linkColor;
    QColor codeColor;  ///< the ground of code within a line
    QColor quoteColor; ///< of the text of quotes
};

/// Text of one format.
struct TextRun
{
    QString text;
    QTextCharFormat format;

    bool operator==(const TextRun &) const = default;
};

constexpr qreal lineIndent = 24;      ///< logical pixels, for each list and quote
constexpr int deepestIndent = 8;      ///< deeper lines stand as far in as these
constexpr qreal paragraphGap = 8;     ///< logical pixels
constexpr qreal codePadding = 10;     ///< logical pixels, between code and the edge of its ground
constexpr qreal tableCellPadding = 6; ///< logical pixels

/// How many blocks of a document a line takes: one, or a table's cells and an empty one before and after them.
int blockCount(const MarkdownLine &line);

/// How the block of a line that is no table stands among the others.
QTextBlockFormat blockFormat(const MarkdownLine &line, bool isFirst, const TextLook &look);
QTextBlockFormat blockFormat(const MarkdownCell &cell, const TextLook &look);

QTextCharFormat lineFormat(const MarkdownLine &line, const TextLook &look);

/// The text of a line, its marker and a blank before it.
QList<TextRun> runsOf(const MarkdownLine &line, const TextLook &look);
QList<TextRun> runsOf(const MarkdownCell &cell, bool isHeading, const TextLook &look);

} // namespace lumora
