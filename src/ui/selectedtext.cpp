// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/selectedtext.h"

#include "ui/documentlines.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace lumora {

namespace {

constexpr int blanksOfIndent = 2;

/// What of the block's text is selected.
QString selectedPart(const QTextBlock &block, int from, int to)
{
    const int begin = std::clamp(from - block.position(), 0, block.length() - 1);
    const int end = std::clamp(to - block.position(), begin, block.length() - 1);
    return block.text().mid(begin, end - begin);
}

QString selectedLine(const MarkdownLine &line, const QTextBlock &block, int from, int to)
{
    if (line.kind == MarkdownLine::Kind::rule)
        return QStringLiteral("---");
    QString text = selectedPart(block, from, to);
    if (from > block.position())
        return text;
    const bool isIndented = line.kind != MarkdownLine::Kind::code && line.depth > 1;
    return isIndented ? QString((line.depth - 1) * blanksOfIndent, u' ') + text : text;
}

/// block: the first cell's.
QString selectedTable(const MarkdownTable &table, QTextBlock block, int from, int to)
{
    QStringList rows;
    for (const QList<MarkdownCell> &row : table) {
        QStringList cells;
        for (qsizetype column = 0; column < row.size(); ++column, block = block.next()) {
            if (block.position() < to && block.position() + block.length() > from)
                cells.append(selectedPart(block, from, to));
        }
        if (!cells.isEmpty())
            rows.append(cells.join(u'\t'));
    }
    return rows.join(u'\n');
}

} // namespace

QString selectedText(const QTextDocument &document, const QList<MarkdownLine> &lines, int from, int to)
{
    QString text;
    bool isFirst = true;
    QTextBlock block = document.firstBlock();
    for (const MarkdownLine &line : lines) {
        QTextBlock next = block;
        for (int count = blockCount(line); count > 0; --count)
            next = next.next();
        const int end = next.isValid() ? next.position() : document.characterCount();
        if (block.position() < to && end > from) {
            if (!isFirst)
                text += line.continues || line.isTight ? QStringLiteral("\n") : QStringLiteral("\n\n");
            const bool isTable = blockCount(line) > 1;
            text += isTable ? selectedTable(line.table, block.next(), from, to) : selectedLine(line, block, from, to);
            isFirst = false;
        }
        block = next;
    }
    return text;
}

} // namespace lumora
