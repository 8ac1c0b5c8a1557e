// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/markdown.h"

#include <QList>

#include <optional>

namespace lumora {

/// Puts the lines of a message together from what a parser finds in it, in order.
class LineCollector
{
public:
    void enterQuote();
    void leaveQuote();
    /// firstNumber: absent in a list of bullets.
    void enterList(std::optional<unsigned> firstNumber, bool isTight);
    void leaveList();
    /// isDone: of a task; absent in any other item.
    void enterItem(std::optional<bool> isDone);
    void leaveItem();

    /// What comes next is of this kind. level: of a heading.
    void beginParagraph(MarkdownLine::Kind kind, int level = 0);
    void endParagraph();
    void endCode();
    void addRule();
    void addTable();
    void addRow();
    void addCell(Qt::Alignment alignment);

    /// Within a paragraph or a cell. The text is harmless.
    void addText(const QString &text, InlineStyles styles, const QUrl &link);
    void breakLine();
    /// Code comes in pieces of any size, each of its lines with a line feed at the end, the last one too.
    void addCode(const QString &text);

    const QList<MarkdownLine> &lines() const { return m_lines; }

private:
    struct List
    {
        std::optional<unsigned> nextNumber;
        bool isTight = false;
        bool hasItems = false;
    };

    void enterContainer();
    QString markerOfItem(std::optional<bool> isDone);
    MarkdownLine &currentLine();

    QList<MarkdownLine> m_lines;
    QList<List> m_lists;
    int m_depth = 0;
    quint32 m_quotes = 0;
    MarkdownLine::Kind m_kind = MarkdownLine::Kind::text;
    int m_level = 0;
    QString m_marker; ///< of the item that has no line yet
    bool m_isTight = false;
    bool m_isLineOpen = false;
    bool m_isBreakDue = false;
};

} // namespace lumora
