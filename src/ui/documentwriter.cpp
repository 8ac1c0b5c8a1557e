// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/documentwriter.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <algorithm>

namespace lumora {

namespace {

QString textOf(const QList<TextRun> &runs)
{
    QString text;
    for (const TextRun &run : runs)
        text += run.text;
    return text;
}

/// The empty blocks around a table, which a document cannot do without.
QTextBlockFormat spacerFormat()
{
    QTextBlockFormat format;
    format.setLineHeight(1, QTextBlockFormat::FixedHeight);
    return format;
}

QTextTableFormat tableFormat(const MarkdownLine &line, bool isFirst)
{
    QTextTableFormat format;
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(tableCellPadding);
    format.setTopMargin(isFirst ? 0 : paragraphGap);
    format.setLeftMargin(std::min(line.depth, deepestIndent) * lineIndent);
    return format;
}

/// from, to: positions in the text of all runs together.
void insertRuns(QTextCursor &cursor, const QList<TextRun> &runs, qsizetype from, qsizetype to)
{
    qsizetype position = 0;
    for (const TextRun &run : runs) {
        const qsizetype begin = std::clamp<qsizetype>(from - position, 0, run.text.size());
        const qsizetype end = std::clamp<qsizetype>(to - position, begin, run.text.size());
        if (begin < end)
            cursor.insertText(run.text.sliced(begin, end - begin), run.format);
        position += run.text.size();
    }
}

/// Formats what is formatted in another way than the runs are. The block has their text.
void formatRuns(QTextCursor &cursor, const QTextBlock &block, const QList<TextRun> &runs)
{
    struct Change
    {
        int from;
        int to;
        QTextCharFormat format;
    };
    QList<Change> changes;
    auto run = runs.cbegin();
    int runEnd = block.position() + (runs.isEmpty() ? 0 : int(run->text.size()));
    for (auto each = block.begin(); !each.atEnd(); ++each) {
        const QTextFragment fragment = each.fragment();
        const int end = fragment.position() + fragment.length();
        for (int begin = fragment.position(); begin < end; begin = std::min(end, runEnd)) {
            while (runEnd <= begin)
                runEnd += int((++run)->text.size());
            if (fragment.charFormat() != run->format)
                changes.append({begin, std::min(end, runEnd), run->format});
        }
    }
    for (const Change &change : changes) {
        cursor.setPosition(change.from);
        cursor.setPosition(change.to, QTextCursor::KeepAnchor);
        cursor.setCharFormat(change.format);
    }
}

/// Brings a block to these runs; what its text begins and ends with stays as it is.
void changeRuns(QTextCursor &cursor, const QTextBlock &block, const QList<TextRun> &runs)
{
    const QString before = block.text();
    const QString after = textOf(runs);
    const qsizetype shorter = std::min(before.size(), after.size());
    const qsizetype prefix =
        std::distance(before.cbegin(), std::mismatch(before.cbegin(), before.cbegin() + shorter, after.cbegin()).first);
    const auto backward = std::mismatch(before.crbegin(), before.crbegin() + (shorter - prefix), after.crbegin());
    const qsizetype suffix = std::distance(before.crbegin(), backward.first);
    cursor.setPosition(block.position() + int(prefix));
    cursor.setPosition(block.position() + int(before.size() - suffix), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    insertRuns(cursor, runs, prefix, after.size() - suffix);
    formatRuns(cursor, block, runs);
}

} // namespace

DocumentWriter::DocumentWriter(QTextDocument *document)
    : m_document(document)
{
    m_document->setUndoRedoEnabled(false);
    m_document->setIndentWidth(lineIndent);
}

void DocumentWriter::write(const QList<MarkdownLine> &lines)
{
    const auto difference = std::mismatch(m_lines.cbegin(), m_lines.cend(), lines.cbegin(), lines.cend());
    qsizetype row = std::distance(m_lines.cbegin(), difference.first);
    if (row == lines.size() && row == m_lines.size())
        return;
    QTextCursor cursor(m_document);
    cursor.beginEditBlock();
    const bool changes = row < m_lines.size() && row < lines.size() && canBecome(m_lines.at(row), lines.at(row));
    truncate(cursor, changes ? row + 1 : row);
    if (changes) {
        change(cursor, row, lines.at(row));
        ++row;
    }
    for (; row < lines.size(); ++row)
        append(cursor, lines.at(row));
    updateBottomMargin();
    cursor.endEditBlock();
}

void DocumentWriter::rewrite()
{
    const QList<MarkdownLine> lines = m_lines;
    QTextCursor cursor(m_document);
    cursor.beginEditBlock();
    truncate(cursor, 0);
    for (const MarkdownLine &line : lines)
        append(cursor, line);
    cursor.endEditBlock();
}

void DocumentWriter::truncate(QTextCursor &cursor, qsizetype row)
{
    if (row >= m_lines.size())
        return;
    // From the end of the last line that stays, its line break included.
    const int position = row == 0 ? 0 : firstBlock(row).position() - 1;
    cursor.setPosition(position);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    if (row == 0) {
        cursor.setBlockFormat({});
        cursor.setBlockCharFormat({});
    }
    m_lines.resize(row);
}

void DocumentWriter::append(QTextCursor &cursor, const MarkdownLine &line)
{
    const bool isFirst = m_lines.isEmpty();
    const bool isTable = blockCount(line) > 1;
    const QTextBlockFormat block = isTable ? spacerFormat() : blockFormat(line, isFirst, m_look);
    const QTextCharFormat format = lineFormat(line, m_look);
    cursor.movePosition(QTextCursor::End);
    if (isFirst) {
        cursor.setBlockFormat(block);
        cursor.setBlockCharFormat(format);
    } else {
        cursor.insertBlock(block, format);
    }
    if (isTable)
        appendTable(cursor, line);
    else
        changeRuns(cursor, cursor.block(), runsOf(line, m_look));
    m_lines.append(line);
}

void DocumentWriter::appendTable(QTextCursor &cursor, const MarkdownLine &line)
{
    QTextTable *table = cursor.insertTable(int(line.table.size()), int(line.table.first().size()),
                                           tableFormat(line, m_lines.isEmpty()));
    changeTable(cursor, table, {}, line.table);
    cursor.movePosition(QTextCursor::End);
    cursor.setBlockFormat(spacerFormat());
}

bool DocumentWriter::canBecome(const MarkdownLine &before, const MarkdownLine &after) const
{
    const bool isTable = blockCount(before) > 1;
    if (isTable != (blockCount(after) > 1))
        return false;
    return !isTable || (before.depth == after.depth && before.table.size() <= after.table.size() &&
                        before.table.first().size() == after.table.first().size());
}

void DocumentWriter::change(QTextCursor &cursor, qsizetype row, const MarkdownLine &line)
{
    const MarkdownLine before = m_lines.at(row);
    const QTextBlock block = firstBlock(row);
    cursor.setPosition(block.position());
    if (blockCount(line) > 1) {
        cursor.movePosition(QTextCursor::NextBlock);
        QTextTable *table = cursor.currentTable();
        table->appendRows(int(line.table.size() - before.table.size()));
        changeTable(cursor, table, before.table, line.table);
    } else {
        const QTextBlockFormat newFormat = blockFormat(line, row == 0, m_look);
        if (newFormat != blockFormat(before, row == 0, m_look))
            cursor.setBlockFormat(newFormat);
        const QTextCharFormat newCharFormat = lineFormat(line, m_look);
        if (newCharFormat != lineFormat(before, m_look))
            cursor.setBlockCharFormat(newCharFormat);
        changeRuns(cursor, block, runsOf(line, m_look));
    }
    m_lines[row] = line;
}

void DocumentWriter::changeTable(QTextCursor &cursor, QTextTable *table, const MarkdownTable &before,
                                 const MarkdownTable &after)
{
    for (qsizetype row = 0; row < after.size(); ++row) {
        for (qsizetype column = 0; column < after.at(row).size(); ++column) {
            const MarkdownCell &cell = after.at(row).at(column);
            const bool isNew = row >= before.size();
            if (isNew || before.at(row).at(column) != cell)
                writeCell(cursor, table, row, column, cell);
        }
    }
}

void DocumentWriter::writeCell(QTextCursor &cursor, QTextTable *table, qsizetype row, qsizetype column,
                               const MarkdownCell &cell)
{
    cursor.setPosition(table->cellAt(int(row), int(column)).firstPosition());
    cursor.setBlockFormat(blockFormat(cell, m_look));
    changeRuns(cursor, cursor.block(), runsOf(cell, row == 0, m_look));
}

void DocumentWriter::updateBottomMargin()
{
    QTextFrame *frame = m_document->rootFrame();
    QTextFrameFormat format = frame->frameFormat();
    const qreal margin = !m_lines.isEmpty() && m_lines.last().isLast ? codePadding : 0;
    if (qFuzzyCompare(format.bottomMargin() + 1, margin + 1))
        return;
    format.setBottomMargin(margin);
    frame->setFrameFormat(format);
}

QTextBlock DocumentWriter::firstBlock(qsizetype row) const
{
    int number = 0;
    for (qsizetype i = 0; i < row; ++i)
        number += blockCount(m_lines.at(i));
    return m_document->findBlockByNumber(number);
}

} // namespace lumora
