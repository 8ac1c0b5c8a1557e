// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/messagetext.h"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace lumora {

namespace {

constexpr qreal paragraphGap = 8;
constexpr qreal indentWidth = 20;
constexpr int deepestIndent = 8;

/// Of the first character that has one; LayoutDirectionAuto where none has.
Qt::LayoutDirection direction(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size();
        switch (QChar::direction(isPair ? QChar::surrogateToUcs4(text.at(i), text.at(i + 1)) : text.at(i).unicode())) {
        case QChar::DirL:
            return Qt::LeftToRight;
        case QChar::DirR:
        case QChar::DirAL:
            return Qt::RightToLeft;
        default:
            break;
        }
    }
    return Qt::LayoutDirectionAuto;
}

/// Left to itself, a text editor takes the direction of the whole text for each line.
Qt::LayoutDirection direction(const MarkdownLine &line)
{
    if (line.kind == MarkdownLine::Kind::code)
        return Qt::LeftToRight;
    for (const MarkdownSpan &span : line.spans) {
        if (const Qt::LayoutDirection found = direction(span.text); found != Qt::LayoutDirectionAuto)
            return found;
    }
    return Qt::LeftToRight;
}

QTextBlockFormat blockFormat(const MarkdownLine &line, bool isFirst)
{
    QTextBlockFormat format;
    format.setTopMargin(isFirst || line.continues ? 0 : paragraphGap);
    format.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
    format.setIndent(std::min(line.depth, deepestIndent));
    if (!line.marker.isEmpty())
        format.setTextIndent(-indentWidth);
    format.setTabPositions({QTextOption::Tab(indentWidth, QTextOption::LeftTab)});
    format.setLayoutDirection(direction(line));
    return format;
}

} // namespace

MessageText::MessageText(QObject *parent)
    : QObject(parent)
{
}

void MessageText::setDocument(QQuickTextDocument *document)
{
    if (m_document == document)
        return;
    m_document = document;
    if (m_document) {
        m_document->textDocument()->setUndoRedoEnabled(false);
        m_document->textDocument()->setIndentWidth(indentWidth);
    }
    writeAnew();
    Q_EMIT documentChanged();
}

void MessageText::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    if (m_document)
        write(read());
    Q_EMIT textChanged();
}

void MessageText::setLinkColor(const QColor &color)
{
    if (m_linkColor == color)
        return;
    m_linkColor = color;
    writeAnew();
    Q_EMIT linkColorChanged();
}

void MessageText::setCodeColor(const QColor &color)
{
    if (m_codeColor == color)
        return;
    m_codeColor = color;
    writeAnew();
    Q_EMIT codeColorChanged();
}

void MessageText::writeAnew()
{
    if (!m_document)
        return;
    m_lines.clear();
    m_document->textDocument()->clear();
    write(read());
}

QList<MarkdownLine> MessageText::read() const
{
    return m_isVerbatim ? readVerbatim(m_text) : readMarkdown(m_text);
}

void MessageText::write(const QList<MarkdownLine> &lines)
{
    const auto firstDifference = std::mismatch(m_lines.cbegin(), m_lines.cend(), lines.cbegin(), lines.cend()).second;
    const qsizetype kept = std::distance(lines.cbegin(), firstDifference);

    QTextDocument *document = m_document->textDocument();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    if (kept < m_lines.size()) {
        // From the end of the last line that stays, its line break included.
        const QTextBlock block = document->findBlockByNumber(int(kept));
        cursor.setPosition(kept == 0 ? 0 : block.position() - 1);
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    cursor.movePosition(QTextCursor::End);
    for (qsizetype row = kept; row < lines.size(); ++row)
        writeLine(cursor, lines.at(row), row == 0);
    cursor.endEditBlock();
    m_lines = lines;
}

void MessageText::writeLine(QTextCursor &cursor, const MarkdownLine &line, bool isFirst) const
{
    const QTextBlockFormat block = blockFormat(line, isFirst);
    if (isFirst)
        cursor.setBlockFormat(block);
    else
        cursor.insertBlock(block, {});
    if (!line.marker.isEmpty())
        cursor.insertText(line.marker + u'\t', {});
    for (const MarkdownSpan &span : line.spans)
        cursor.insertText(span.text, format(line, span));
    if (line.kind == MarkdownLine::Kind::rule)
        cursor.insertText(QStringLiteral("———"), {});
}

QTextCharFormat MessageText::format(const MarkdownLine &line, const MarkdownSpan &span) const
{
    QTextCharFormat format;
    format.setFontItalic(span.styles.testFlag(InlineStyle::emphasis));
    if (span.styles.testFlag(InlineStyle::strong) || line.kind == MarkdownLine::Kind::heading)
        format.setFontWeight(QFont::Bold);
    format.setFontStrikeOut(span.styles.testFlag(InlineStyle::strikethrough));
    if (span.styles.testFlag(InlineStyle::code) || line.kind == MarkdownLine::Kind::code) {
        format.setFontFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        format.setBackground(m_codeColor);
    }
    if (!span.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(span.link.toString(QUrl::FullyEncoded));
        format.setForeground(m_linkColor);
        format.setFontUnderline(true);
    }
    return format;
}

} // namespace lumora
