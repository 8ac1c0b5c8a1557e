// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/linecollector.h"

#include "ui/markdowncharacters.h"

namespace lumora {

namespace {

quint32 bit(int depth)
{
    return depth < 32 ? 1U << depth : 0;
}

} // namespace

void LineCollector::enterQuote()
{
    enterContainer();
    m_quotes |= bit(m_depth - 1);
}

void LineCollector::leaveQuote()
{
    endParagraph();
    m_quotes &= ~bit(--m_depth);
}

void LineCollector::enterList(std::optional<unsigned> firstNumber, bool isTight)
{
    enterContainer();
    m_lists.append(List{.nextNumber = firstNumber, .isTight = isTight});
}

void LineCollector::leaveList()
{
    endParagraph();
    --m_depth;
    m_lists.removeLast();
}

void LineCollector::enterItem(std::optional<bool> isDone)
{
    endParagraph();
    m_marker = markerOfItem(isDone);
    List &list = m_lists.last();
    m_isTight = list.isTight && (list.hasItems || m_lists.size() > 1);
    list.hasItems = true;
}

void LineCollector::leaveItem()
{
    endParagraph();
    if (!m_marker.isEmpty())
        currentLine(); // an item without text still shows its marker
    endParagraph();
}

void LineCollector::beginParagraph(MarkdownLine::Kind kind, int level)
{
    endParagraph();
    m_kind = kind;
    m_level = level;
}

void LineCollector::endParagraph()
{
    m_isLineOpen = false;
    m_isBreakDue = false;
    m_kind = MarkdownLine::Kind::text;
    m_level = 0;
}

void LineCollector::endCode()
{
    if (m_isLineOpen)
        m_lines.last().isLast = true;
    endParagraph();
}

void LineCollector::addRule()
{
    beginParagraph(MarkdownLine::Kind::rule);
    currentLine();
    endParagraph();
}

void LineCollector::addTable()
{
    beginParagraph(MarkdownLine::Kind::table);
    currentLine();
}

void LineCollector::addRow()
{
    currentLine().table.append(QList<MarkdownCell>());
}

void LineCollector::addCell(Qt::Alignment alignment)
{
    currentLine().table.last().append(MarkdownCell{.alignment = alignment});
}

void LineCollector::addText(const QString &text, InlineStyles styles, const QUrl &link)
{
    MarkdownLine &line = currentLine();
    QList<MarkdownSpan> &spans = line.table.isEmpty() ? line.spans : line.table.last().last().spans;
    if (!spans.isEmpty() && spans.last().styles == styles && spans.last().link == link)
        spans.last().text += text;
    else
        spans.append(MarkdownSpan{text, styles, link});
}

void LineCollector::breakLine()
{
    MarkdownLine next = currentLine();
    next.continues = true;
    next.isTight = false;
    next.marker.clear();
    next.spans.clear();
    m_lines.append(next);
}

void LineCollector::addCode(const QString &text)
{
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype lineFeed = text.indexOf(u'\n', begin);
        const qsizetype end = lineFeed < 0 ? text.size() : lineFeed;
        if (m_isBreakDue)
            breakLine();
        currentLine();
        if (end > begin)
            addText(harmless(text.mid(begin, end - begin)), {}, {});
        m_isBreakDue = lineFeed >= 0;
        begin = end + 1;
    }
}

void LineCollector::enterContainer()
{
    leaveItem(); // its marker stands above what it begins with
    ++m_depth;
}

QString LineCollector::markerOfItem(std::optional<bool> isDone)
{
    if (std::optional<unsigned> &number = m_lists.last().nextNumber)
        return QString::number((*number)++) + u'.';
    if (isDone)
        return *isDone ? QStringLiteral("☑") : QStringLiteral("☐");
    return QStringLiteral("•");
}

MarkdownLine &LineCollector::currentLine()
{
    if (!m_isLineOpen) {
        m_lines.append(MarkdownLine{.kind = m_kind,
                                    .level = m_level,
                                    .depth = m_depth,
                                    .quotes = m_quotes,
                                    .marker = m_marker,
                                    .isTight = m_isTight});
        m_marker.clear();
        m_isTight = false;
        m_isLineOpen = true;
    }
    return m_lines.last();
}

} // namespace lumora
