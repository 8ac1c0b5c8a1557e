// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/documentlines.h"

#include <QList>

class QTextBlock;
class QTextCursor;
class QTextDocument;
class QTextTable;

namespace lumora {

/// Keeps a document at the lines of a message. From one text to the next it touches only what differs, down to the
/// character, so that a text that grows costs what has been added, and what is selected stays selected.
class DocumentWriter
{
public:
    /// The document is empty, and nobody else writes it. It must outlive the writer.
    explicit DocumentWriter(QTextDocument *document);

    /// Of what is written from now on.
    void setLook(const TextLook &look) { m_look = look; }
    void write(const QList<MarkdownLine> &lines);
    /// Writes all of it once more.
    void rewrite();

    /// As they stand in the document.
    const QList<MarkdownLine> &lines() const { return m_lines; }

private:
    /// Takes away the lines from this one on.
    void truncate(QTextCursor &cursor, qsizetype row);
    void append(QTextCursor &cursor, const MarkdownLine &line);
    void appendTable(QTextCursor &cursor, const MarkdownLine &line);
    void change(QTextCursor &cursor, qsizetype row, const MarkdownLine &line);
    bool canBecome(const MarkdownLine &before, const MarkdownLine &after) const;
    void changeTable(QTextCursor &cursor, QTextTable *table, const MarkdownTable &before, const MarkdownTable &after);
    void writeCell(QTextCursor &cursor, QTextTable *table, qsizetype row, qsizetype column, const MarkdownCell &cell);

    /// Leaves room for the ground of code that the text ends with.
    void updateBottomMargin();
    QTextBlock firstBlock(qsizetype row) const;

    QTextDocument *m_document;
    TextLook m_look;
    QList<MarkdownLine> m_lines;
};

} // namespace lumora
