// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/documentlines.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <algorithm>
#include <array>

namespace lumora {

namespace {

constexpr qreal headingGap = 14;
constexpr qreal tightGap = 3;
constexpr qreal ruleGap = 14;
constexpr qreal lineHeight = 1.43; // times the size of the font; lines of other fonts are as high as the rest
constexpr qreal leastMarkerGap = 3;
constexpr std::array headingSizes{1.36, 1.2, 1.08}; // times the body's, by level; deeper ones as the last

const QString &codeFamily()
{
    static const QString family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    return family;
}

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
Qt::LayoutDirection direction(const QList<MarkdownSpan> &spans)
{
    for (const MarkdownSpan &span : spans) {
        if (const Qt::LayoutDirection found = direction(span.text); found != Qt::LayoutDirectionAuto)
            return found;
    }
    return Qt::LeftToRight;
}

qreal gapAbove(const MarkdownLine &line)
{
    if (line.continues)
        return 0;
    if (line.kind == MarkdownLine::Kind::heading)
        return headingGap;
    if (line.kind == MarkdownLine::Kind::rule)
        return ruleGap;
    return line.isTight ? tightGap : paragraphGap;
}

int codeSize(const TextLook &look)
{
    return look.font.pixelSize() - 1;
}

int sizeOf(const MarkdownLine &line, const TextLook &look)
{
    if (line.kind == MarkdownLine::Kind::code)
        return codeSize(look);
    if (line.kind != MarkdownLine::Kind::heading)
        return look.font.pixelSize();
    const int level = std::clamp(line.level, 1, int(headingSizes.size()));
    return qRound(look.font.pixelSize() * headingSizes[size_t(level - 1)]);
}

/// Not set where it is as the document's own.
QTextCharFormat spanFormat(const MarkdownSpan &span, QTextCharFormat format, const TextLook &look)
{
    if (span.styles.testFlag(InlineStyle::emphasis))
        format.setFontItalic(true);
    if (span.styles.testFlag(InlineStyle::strong))
        format.setFontWeight(QFont::Bold);
    if (span.styles.testFlag(InlineStyle::strikethrough))
        format.setFontStrikeOut(true);
    if (span.styles.testFlag(InlineStyle::code)) {
        format.setFontFamilies({codeFamily()});
        format.setProperty(QTextFormat::FontPixelSize, codeSize(look));
        format.setBackground(look.codeColor);
    }
    if (!span.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(span.link.toString(QUrl::FullyEncoded));
        format.setForeground(look.linkColor);
        format.setFontUnderline(true);
    }
    return format;
}

/// The marker, as wide as its indent together with the blank after it. (Tabs would do it from left to right only.)
QList<TextRun> markerRuns(const QString &marker, const QTextCharFormat &format, const TextLook &look)
{
    const qreal width = QFontMetricsF(look.font).horizontalAdvance(marker + u' ');
    QTextCharFormat blank = format;
    blank.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    blank.setFontLetterSpacing(std::max(lineIndent - width, leastMarkerGap));
    return {{marker, format}, {QStringLiteral(" "), blank}};
}

QList<TextRun> runsOf(const QList<MarkdownSpan> &spans, const QTextCharFormat &format, const TextLook &look)
{
    QList<TextRun> runs;
    for (const MarkdownSpan &span : spans)
        runs.append({span.text, spanFormat(span, format, look)});
    return runs;
}

} // namespace

int blockCount(const MarkdownLine &line)
{
    if (line.kind != MarkdownLine::Kind::table || line.table.isEmpty())
        return 1;
    return int(line.table.size() * line.table.first().size()) + 2;
}

QTextBlockFormat blockFormat(const MarkdownLine &line, bool isFirst, const TextLook &look)
{
    const bool isCode = line.kind == MarkdownLine::Kind::code;
    QTextBlockFormat format;
    format.setIndent(std::min(line.depth, deepestIndent));
    if (!line.marker.isEmpty())
        format.setTextIndent(-lineIndent);
    format.setTopMargin((isFirst ? 0 : gapAbove(line)) + (isCode && !line.continues ? codePadding : 0));
    if (isCode) {
        format.setLeftMargin(codePadding);
        format.setRightMargin(codePadding);
        format.setBottomMargin(line.isLast ? codePadding + paragraphGap : 0);
    }
    if (line.kind == MarkdownLine::Kind::rule) {
        format.setLineHeight(1, QTextBlockFormat::FixedHeight);
        format.setBottomMargin(ruleGap);
    } else {
        format.setLineHeight(qRound(sizeOf(line, look) * lineHeight), QTextBlockFormat::MinimumHeight);
    }
    format.setLayoutDirection(isCode ? Qt::LeftToRight : direction(line.spans));
    return format;
}

QTextBlockFormat blockFormat(const MarkdownCell &cell, const TextLook &look)
{
    QTextBlockFormat format;
    format.setLineHeight(qRound(look.font.pixelSize() * lineHeight), QTextBlockFormat::MinimumHeight);
    format.setLayoutDirection(direction(cell.spans));
    if (cell.alignment != Qt::Alignment())
        format.setAlignment(cell.alignment | Qt::AlignAbsolute);
    return format;
}

QTextCharFormat lineFormat(const MarkdownLine &line, const TextLook &look)
{
    QTextCharFormat format;
    if (line.kind == MarkdownLine::Kind::heading)
        format.setFontWeight(QFont::Bold);
    if (line.kind == MarkdownLine::Kind::code)
        format.setFontFamilies({codeFamily()});
    else if (line.quotes != 0)
        format.setForeground(look.quoteColor);
    if (sizeOf(line, look) != look.font.pixelSize())
        format.setProperty(QTextFormat::FontPixelSize, sizeOf(line, look));
    return format;
}

QList<TextRun> runsOf(const MarkdownLine &line, const TextLook &look)
{
    const QTextCharFormat format = lineFormat(line, look);
    const QList<TextRun> text = runsOf(line.spans, format, look);
    return line.marker.isEmpty() ? text : markerRuns(line.marker, format, look) + text;
}

QList<TextRun> runsOf(const MarkdownCell &cell, bool isHeading, const TextLook &look)
{
    QTextCharFormat format;
    if (isHeading)
        format.setFontWeight(QFont::Bold);
    return runsOf(cell.spans, format, look);
}

} // namespace lumora
