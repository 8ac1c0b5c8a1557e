// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/inlinemarkdown.h"

#include <QTextDocumentFragment>

#include <md4c.h>

#include <optional>

namespace lumora {

namespace {

constexpr unsigned parserFlags = MD_FLAG_STRIKETHROUGH | MD_FLAG_NOHTML;

/// Characters that a QTextDocument gives a meaning of its own stand as U+FFFD.
QString harmless(QString text)
{
    for (QChar &unit : text) {
        if (unit.isNull() || unit == QChar::ObjectReplacementCharacter || unit == QChar(0xfdd0) ||
            unit == QChar(0xfdd1))
            unit = QChar::ReplacementCharacter;
        else if (unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator || unit == u'\r')
            unit = u' ';
    }
    return text;
}

/// entity: with its ampersand and semicolon. One that nobody knows stays as it is written.
QString decodedEntity(const QString &entity)
{
    if (!entity.startsWith(u"&#"))
        return QTextDocumentFragment::fromHtml(entity).toPlainText();
    const bool isHexadecimal = entity.size() > 2 && entity.at(2).toLower() == u'x';
    const QStringView digits = QStringView(entity).sliced(isHexadecimal ? 3 : 2).chopped(1);
    bool isNumber = false;
    const uint codePoint = digits.toUInt(&isNumber, isHexadecimal ? 16 : 10);
    const bool isCharacter = isNumber && codePoint <= QChar::LastValidCodePoint && !QChar::isSurrogate(codePoint);
    const char32_t character = isCharacter ? codePoint : char32_t(QChar::ReplacementCharacter);
    return harmless(QString::fromUcs4(&character, 1));
}

QString attributeText(const MD_ATTRIBUTE &attribute)
{
    QString text;
    for (int i = 0; attribute.size > 0 && attribute.substr_offsets[i] < attribute.size; ++i) {
        const MD_OFFSET begin = attribute.substr_offsets[i];
        const QString part = QString::fromUtf8(attribute.text + begin, attribute.substr_offsets[i + 1] - begin);
        text += attribute.substr_types[i] == MD_TEXT_ENTITY ? decodedEntity(part) : part;
    }
    return text;
}

QUrl permittedLink(const QString &address)
{
    QUrl url(address, QUrl::StrictMode);
    for (const QString &scheme : {QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto")}) {
        if (url.scheme() == scheme)
            return url;
    }
    return {};
}

std::optional<InlineStyle> styleOf(MD_SPANTYPE type)
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
        return std::nullopt;
    }
}

/// Collects the lines while the parser goes through the text.
class MarkdownReader
{
public:
    QList<MarkdownLine> read(const QByteArray &utf8);

private:
    struct List
    {
        std::optional<unsigned> nextNumber; ///< absent in a bulleted list
    };

    void enterBlock(MD_BLOCKTYPE type, void *detail);
    void leaveBlock(MD_BLOCKTYPE type);
    void enterSpan(MD_SPANTYPE type, void *detail);
    void leaveSpan(MD_SPANTYPE type);
    void addText(MD_TEXTTYPE type, const QString &text);

    QString nextMarker();
    MarkdownLine &currentLine();
    void addSpan(const QString &text);
    void breakLine();
    void addCode(const QString &text);
    void endParagraph();

    QList<MarkdownLine> m_lines;
    QList<List> m_lists;
    int m_quotes = 0;
    MarkdownLine::Kind m_kind = MarkdownLine::Kind::text;
    QString m_marker;
    bool m_isLineOpen = false;
    bool m_isBreakDue = false;
    QList<InlineStyle> m_styles;
    QUrl m_link;
};

QList<MarkdownLine> MarkdownReader::read(const QByteArray &utf8)
{
    MD_PARSER parser = {};
    parser.flags = parserFlags;
    parser.enter_block = [](MD_BLOCKTYPE type, void *detail, void *self) {
        static_cast<MarkdownReader *>(self)->enterBlock(type, detail);
        return 0;
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
    md_parse(utf8.constData(), MD_SIZE(utf8.size()), &parser, this);
    return m_lines;
}

void MarkdownReader::enterBlock(MD_BLOCKTYPE type, void *detail)
{
    endParagraph();
    switch (type) {
    case MD_BLOCK_QUOTE:
        ++m_quotes;
        break;
    case MD_BLOCK_UL:
        m_lists.append(List{});
        break;
    case MD_BLOCK_OL:
        m_lists.append(List{static_cast<MD_BLOCK_OL_DETAIL *>(detail)->start});
        break;
    case MD_BLOCK_LI:
        m_marker = nextMarker();
        break;
    case MD_BLOCK_HR:
        m_kind = MarkdownLine::Kind::rule;
        currentLine();
        break;
    case MD_BLOCK_H:
        m_kind = MarkdownLine::Kind::heading;
        break;
    case MD_BLOCK_CODE:
        m_kind = MarkdownLine::Kind::code;
        break;
    default:
        break;
    }
}

void MarkdownReader::leaveBlock(MD_BLOCKTYPE type)
{
    endParagraph();
    switch (type) {
    case MD_BLOCK_QUOTE:
        --m_quotes;
        break;
    case MD_BLOCK_UL:
    case MD_BLOCK_OL:
        m_lists.removeLast();
        break;
    case MD_BLOCK_LI:
        if (!m_marker.isEmpty())
            currentLine(); // an item without text still shows its marker
        endParagraph();
        break;
    default:
        break;
    }
    m_kind = MarkdownLine::Kind::text;
}

void MarkdownReader::enterSpan(MD_SPANTYPE type, void *detail)
{
    if (type == MD_SPAN_A)
        m_link = permittedLink(attributeText(static_cast<MD_SPAN_A_DETAIL *>(detail)->href));
    else if (const auto style = styleOf(type))
        m_styles.append(*style);
}

void MarkdownReader::leaveSpan(MD_SPANTYPE type)
{
    if (type == MD_SPAN_A)
        m_link.clear();
    else if (styleOf(type))
        m_styles.removeLast();
}

void MarkdownReader::addText(MD_TEXTTYPE type, const QString &text)
{
    switch (type) {
    case MD_TEXT_NULLCHAR:
        addSpan(QString(QChar::ReplacementCharacter));
        break;
    case MD_TEXT_BR:
    case MD_TEXT_SOFTBR:
        breakLine();
        break;
    case MD_TEXT_ENTITY:
        addSpan(decodedEntity(text));
        break;
    default:
        if (m_kind == MarkdownLine::Kind::code)
            addCode(text);
        else
            addSpan(harmless(text));
        break;
    }
}

QString MarkdownReader::nextMarker()
{
    std::optional<unsigned> &number = m_lists.last().nextNumber;
    return number ? QString::number((*number)++) + u'.' : QStringLiteral("•");
}

MarkdownLine &MarkdownReader::currentLine()
{
    if (!m_isLineOpen) {
        m_lines.append(MarkdownLine{.kind = m_kind, .depth = int(m_lists.size()) + m_quotes, .marker = m_marker});
        m_marker.clear();
        m_isLineOpen = true;
    }
    return m_lines.last();
}

void MarkdownReader::addSpan(const QString &text)
{
    InlineStyles styles;
    for (const InlineStyle style : m_styles)
        styles |= style;
    QList<MarkdownSpan> &spans = currentLine().spans;
    if (!spans.isEmpty() && spans.last().styles == styles && spans.last().link == m_link)
        spans.last().text += text;
    else
        spans.append(MarkdownSpan{text, styles, m_link});
}

void MarkdownReader::breakLine()
{
    const int depth = currentLine().depth;
    m_lines.append(MarkdownLine{.kind = m_kind, .depth = depth, .continues = true});
}

void MarkdownReader::addCode(const QString &text)
{
    // Code comes in pieces of any size, each of its lines with a line feed at the end, the last one too.
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype lineFeed = text.indexOf(u'\n', begin);
        const qsizetype end = lineFeed < 0 ? text.size() : lineFeed;
        if (m_isBreakDue)
            breakLine();
        currentLine();
        if (end > begin)
            addSpan(harmless(text.mid(begin, end - begin)));
        m_isBreakDue = lineFeed >= 0;
        begin = end + 1;
    }
}

void MarkdownReader::endParagraph()
{
    m_isLineOpen = false;
    m_isBreakDue = false;
}

/// Whether the text ends in a line of one or two dashes or equals signs, as a list or a rule does that is just
/// arriving. It would make a heading of the line above until the rest is there.
bool endsInPartialMark(QStringView text)
{
    const qsizetype lineFeed = text.lastIndexOf(u'\n');
    const QStringView line = text.mid(lineFeed + 1).trimmed();
    return lineFeed >= 0 && (line == u"-" || line == u"--" || line == u"=" || line == u"==");
}

} // namespace

QList<MarkdownLine> readMarkdown(const QString &markdown)
{
    if (!endsInPartialMark(markdown))
        return MarkdownReader().read(markdown.toUtf8());

    const QChar guard(0x200b);
    QList<MarkdownLine> lines = MarkdownReader().read((markdown + guard).toUtf8());
    if (!lines.isEmpty() && !lines.last().spans.isEmpty()) {
        QString &text = lines.last().spans.last().text;
        if (text.endsWith(guard))
            text.chop(1);
    }
    return lines;
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
