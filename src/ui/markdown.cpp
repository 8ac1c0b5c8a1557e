// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/markdown.h"

#include "ui/linecollector.h"
#include "ui/markdowncharacters.h"

#include <md4c.h>

#include <optional>

namespace lumora {

namespace {

constexpr unsigned withoutTables =
    MD_FLAG_STRIKETHROUGH | MD_FLAG_TASKLISTS | MD_FLAG_PERMISSIVEURLAUTOLINKS | MD_FLAG_NOHTML;
constexpr unsigned mostCells = 2000; // of a table; each one is laid out whenever one of them changes

QUrl permittedLink(const QString &address)
{
    QUrl url(address, QUrl::StrictMode);
    for (const QString &scheme : {QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto")}) {
        if (url.scheme() == scheme)
            return url;
    }
    return {};
}

InlineStyles styleOf(MD_SPANTYPE type)
{
    switch (type) {
    case MD_SPAN_EM:
        return InlineStyle::emphasis;
    case MD_SPAN_STRONG:
        return InlineStyle::strong;
    case MD_SPAN_DEL:
        return InlineStyle::strikethrough;
    case MD_SPAN_CODE:
        return InlineStyle::code;
    default:
        return {};
    }
}

Qt::Alignment alignmentOf(MD_ALIGN alignment)
{
    switch (alignment) {
    case MD_ALIGN_LEFT:
        return Qt::AlignLeft;
    case MD_ALIGN_CENTER:
        return Qt::AlignHCenter;
    case MD_ALIGN_RIGHT:
        return Qt::AlignRight;
    default:
        return {};
    }
}

/// Tells the collector what the parser finds.
class MarkdownReader
{
public:
    /// Nothing where there is a table beyond all bounds.
    std::optional<QList<MarkdownLine>> read(const QByteArray &utf8, unsigned flags);

private:
    /// Below 0 to end it all.
    int enterBlock(MD_BLOCKTYPE type, void *detail);
    void leaveBlock(MD_BLOCKTYPE type);
    void enterSpan(MD_SPANTYPE type, void *detail);
    void leaveSpan(MD_SPANTYPE type);
    void addText(MD_TEXTTYPE type, const QString &text);
    QString addressOf(const MD_ATTRIBUTE &attribute);

    LineCollector m_collector;
    QList<InlineStyles> m_styles{InlineStyles()}; ///< of the spans that are open, each with those around it
    QUrl m_link;
    bool m_isCode = false;
    CharacterReferences m_references;
};

std::optional<QList<MarkdownLine>> MarkdownReader::read(const QByteArray &utf8, unsigned flags)
{
    MD_PARSER parser = {};
    parser.flags = flags;
    parser.enter_block = [](MD_BLOCKTYPE type, void *detail, void *self) {
        return static_cast<MarkdownReader *>(self)->enterBlock(type, detail);
    };
    parser.leave_block = [](MD_BLOCKTYPE type, void *, void *self) {
        static_cast<MarkdownReader *>(self)->leaveBlock(type);
        return 0;
    };
    parser.enter_span = [](MD_SPANTYPE type, void *detail, void *self) {
        static_cast<MarkdownReader *>(self)->enterSpan(type, detail);
        return 0;
    };
    parser.leave_span = [](MD_SPANTYPE type, void *, void *self) {
        static_cast<MarkdownReader *>(self)->leaveSpan(type);
        return 0;
    };
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR *text, MD_SIZE size, void *self) {
        static_cast<MarkdownReader *>(self)->addText(type, QString::fromUtf8(text, size));
        return 0;
    };
    if (md_parse(utf8.constData(), MD_SIZE(utf8.size()), &parser, this) != 0)
        return std::nullopt;
    return m_collector.lines();
}

int MarkdownReader::enterBlock(MD_BLOCKTYPE type, void *detail)
{
    switch (type) {
    case MD_BLOCK_QUOTE:
        m_collector.enterQuote();
        break;
    case MD_BLOCK_UL:
        m_collector.enterList(std::nullopt, static_cast<MD_BLOCK_UL_DETAIL *>(detail)->is_tight != 0);
        break;
    case MD_BLOCK_OL: {
        const auto *list = static_cast<MD_BLOCK_OL_DETAIL *>(detail);
        m_collector.enterList(list->start, list->is_tight != 0);
        break;
    }
    case MD_BLOCK_LI: {
        const auto *item = static_cast<MD_BLOCK_LI_DETAIL *>(detail);
        m_collector.enterItem(item->is_task ? std::optional(item->task_mark != ' ') : std::nullopt);
        break;
    }
    case MD_BLOCK_HR:
        m_collector.addRule();
        break;
    case MD_BLOCK_H:
        m_collector.beginParagraph(MarkdownLine::Kind::heading, int(static_cast<MD_BLOCK_H_DETAIL *>(detail)->level));
        break;
    case MD_BLOCK_CODE:
        m_isCode = true;
        m_collector.beginParagraph(MarkdownLine::Kind::code);
        break;
    case MD_BLOCK_P:
        m_collector.beginParagraph(MarkdownLine::Kind::text);
        break;
    case MD_BLOCK_TABLE: {
        const auto *table = static_cast<MD_BLOCK_TABLE_DETAIL *>(detail);
        if (table->col_count > mostCells / (table->body_row_count + 1))
            return -1;
        m_collector.addTable();
        break;
    }
    case MD_BLOCK_TR:
        m_collector.addRow();
        break;
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
        m_collector.addCell(alignmentOf(static_cast<MD_BLOCK_TD_DETAIL *>(detail)->align));
        break;
    default:
        break;
    }
    return 0;
}

void MarkdownReader::leaveBlock(MD_BLOCKTYPE type)
{
    switch (type) {
    case MD_BLOCK_QUOTE:
        m_collector.leaveQuote();
        break;
    case MD_BLOCK_UL:
    case MD_BLOCK_OL:
        m_collector.leaveList();
        break;
    case MD_BLOCK_LI:
        m_collector.leaveItem();
        break;
    case MD_BLOCK_CODE:
        m_isCode = false;
        m_collector.endCode();
        break;
    case MD_BLOCK_H:
    case MD_BLOCK_P:
    case MD_BLOCK_TABLE:
        m_collector.endParagraph();
        break;
    default:
        break;
    }
}

void MarkdownReader::enterSpan(MD_SPANTYPE type, void *detail)
{
    if (type == MD_SPAN_A)
        m_link = permittedLink(addressOf(static_cast<MD_SPAN_A_DETAIL *>(detail)->href));
    m_styles.append(m_styles.last() | styleOf(type));
}

void MarkdownReader::leaveSpan(MD_SPANTYPE type)
{
    if (type == MD_SPAN_A)
        m_link.clear();
    m_styles.removeLast();
}

void MarkdownReader::addText(MD_TEXTTYPE type, const QString &text)
{
    switch (type) {
    case MD_TEXT_NULLCHAR:
        m_collector.addText(QString(QChar::ReplacementCharacter), m_styles.last(), m_link);
        break;
    case MD_TEXT_BR:
    case MD_TEXT_SOFTBR:
        m_collector.breakLine();
        break;
    case MD_TEXT_ENTITY:
        m_collector.addText(m_references.decoded(text), m_styles.last(), m_link);
        break;
    default:
        if (m_isCode)
            m_collector.addCode(text);
        else
            m_collector.addText(harmless(text), m_styles.last(), m_link);
        break;
    }
}

QString MarkdownReader::addressOf(const MD_ATTRIBUTE &attribute)
{
    QString address;
    for (int i = 0; attribute.size > 0 && attribute.substr_offsets[i] < attribute.size; ++i) {
        const MD_OFFSET begin = attribute.substr_offsets[i];
        const QString part = QString::fromUtf8(attribute.text + begin, attribute.substr_offsets[i + 1] - begin);
        address += attribute.substr_types[i] == MD_TEXT_ENTITY ? m_references.decoded(part) : part;
    }
    return address;
}

} // namespace

QList<MarkdownLine> readMarkdown(const QString &markdown)
{
    const QByteArray utf8 = markdown.toUtf8();
    if (const auto lines = MarkdownReader().read(utf8, withoutTables | MD_FLAG_TABLES))
        return *lines;
    return MarkdownReader().read(utf8, withoutTables).value_or(QList<MarkdownLine>());
}

QList<MarkdownLine> readVerbatim(const QString &text)
{
    QList<MarkdownLine> lines;
    for (const QString &line : text.split(u'\n')) {
        lines.append(MarkdownLine{.continues = true});
        if (!line.isEmpty())
            lines.last().spans.append(MarkdownSpan{harmless(line)});
    }
    return lines;
}

} // namespace lumora
