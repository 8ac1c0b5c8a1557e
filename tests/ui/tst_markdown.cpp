// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/markdown.h"

#include <QTest>

#include <algorithm>

using namespace lumora;

namespace {

QString described(const QList<MarkdownSpan> &spans)
{
    QString text;
    for (const MarkdownSpan &span : spans) {
        QString marks;
        if (span.styles.testFlag(InlineStyle::emphasis))
            marks += u'i';
        if (span.styles.testFlag(InlineStyle::strong))
            marks += u'b';
        if (span.styles.testFlag(InlineStyle::strikethrough))
            marks += u's';
        if (span.styles.testFlag(InlineStyle::code))
            marks += u'c';
        if (!span.link.isEmpty())
            marks += u'<' + span.link.toString() + u'>';
        text += marks.isEmpty() ? span.text : marks + u'{' + span.text + u'}';
    }
    return text;
}

QString described(const MarkdownTable &table)
{
    QStringList rows;
    for (const QList<MarkdownCell> &row : table) {
        QStringList cells;
        for (const MarkdownCell &cell : row)
            cells << (cell.alignment == Qt::AlignRight ? "to the right " : "") + described(cell.spans);
        rows << cells.join(u'|');
    }
    return rows.join(u'/');
}

/// One line of the result as one text: what kind of line, what it stands in (l for a list, q for a quote) and its
/// marker, then its spans.
QString described(const MarkdownLine &line)
{
    QString text;
    if (line.kind == MarkdownLine::Kind::heading)
        text += QStringLiteral("heading%1 ").arg(line.level);
    if (line.kind == MarkdownLine::Kind::code)
        text += line.isLast ? "code$ " : "code ";
    if (line.kind == MarkdownLine::Kind::rule)
        text += "rule";
    if (line.kind == MarkdownLine::Kind::table)
        text += "table ";
    for (int level = 0; level < std::min(line.depth, 32); ++level)
        text += (line.quotes >> level) & 1U ? u'q' : u'l';
    text += line.isTight ? "~ " : line.depth > 0 ? " " : "";
    if (!line.marker.isEmpty())
        text += line.marker + u' ';
    if (line.continues)
        text += "+ ";
    return text + described(line.spans) + described(line.table);
}

QStringList described(const QList<MarkdownLine> &lines)
{
    QStringList texts;
    for (const MarkdownLine &line : lines)
        texts << described(line);
    return texts;
}

} // namespace

class MarkdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsMarkdown_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QStringList>("lines");

        const auto row = [](const char *name, const char *markdown, const QStringList &lines) {
            QTest::newRow(name) << QString::fromUtf8(markdown) << lines;
        };

        row("nothing", "", {});
        row("strong", "a **b** c", {"a b{b} c"});
        row("strong alone", "**bold**", {"b{bold}"});
        row("emphasis", "*a* _b_", {"i{a} i{b}"});
        row("strikethrough", "~~a~~ ~b~", {"s{a} s{b}"});
        row("code span", "`a **b** <i>`", {"c{a **b** <i>}"});
        row("nested styles", "***a** b*", {"ib{a}i{ b}"});
        row("unclosed strong", "**a", {"**a"});
        row("unclosed code", "`a", {"`a"});
        row("style over a line break", "**a\nb**", {"b{a}", "+ b{b}"});
        row("escaped mark", "\\*a\\*", {"*a*"});
        row("snake case", "read_my_file", {"read_my_file"});

        row("web link", "[a](https://b.org/c?d=1&e=2)", {"<https://b.org/c?d=1&e=2>{a}"});
        row("mail link", "[a](mailto:b@c.org)", {"<mailto:b@c.org>{a}"});
        row("link in angle brackets", "<https://b.org>", {"<https://b.org>{https://b.org}"});
        row("scheme in capitals", "[a](HTTPS://b.org)", {"<https://b.org>{a}"});
        row("strong link", "**[a](http://b)**", {"b<http://b>{a}"});
        row("script link", "[a](javascript:alert(1))", {"a"});
        row("disguised script link", "[a](java&#115;cript:alert(1))", {"a"});
        row("script link with a control character", "[a](&#1;javascript:alert(1))", {"a"});
        row("file link", "[a](file:///etc/passwd)", {"a"});
        row("data link", "[a](data:text/html,b)", {"a"});
        row("relative link", "[a](b.md)", {"a"});
        row("image", "![a](https://b.org/c.png)", {"a"});
        row("linked image", "[![a](http://b/c.png)](http://d)", {"<http://d>{a}"});

        row("script tag", "<script>alert(1)</script>", {"<script>alert(1)</script>"});
        row("tags in a line", "a <img src=x onerror=y> <b>b</b>", {"a <img src=x onerror=y> <b>b</b>"});
        row("style attribute", "<p style=\"font-size:99px\">a</p>", {"<p style=\"font-size:99px\">a</p>"});
        row("comment", "<!-- a -->", {"<!-- a -->"});
        row("entities", "&lt;b&gt; &amp;amp; &copy; &#65;&#x42;", {"<b> &amp; © AB"});
        row("unknown entity", "&nothing;", {"&nothing;"});
        row("forbidden characters",
            "a&#0;b\xEF\xBF\xBC\xEF\xB7\x90"
            "c&#xFDD1;",
            {"a\uFFFDb\uFFFD\uFFFDc\uFFFD"});

        row("line break", "a\nb", {"a", "+ b"});
        row("paragraphs", "a\n\n\nb", {"a", "b"});
        row("headings", "# a *b*\n### c", {"heading1 a i{b}", "heading3 c"});
        row("heading over a line", "a\n===\nb", {"heading1 a", "b"});
        row("no heading without a blank", "#a", {"#a"});
        row("bulleted list", "- a\n- b", {"l • a", "l~ • b"});
        row("numbered list", "3. a\n4. b", {"l 3. a", "l~ 4. b"});
        row("nested list", "- a\n  1. b", {"l • a", "ll~ 1. b"});
        row("list in a list at once", "- - a", {"l • ", "ll~ • a"});
        row("tasks", "- [ ] a\n- [x] b\n- [y] c", {"l ☐ a", "l~ ☑ b", "l~ • [y] c"});
        row("loose list", "- a\n\n  b\n\n- c", {"l • a", "l b", "l • c"});
        row("list item of two lines", "- a\n  b", {"l • a", "l + b"});
        row("empty list item", "-\n- a", {"l • ", "l~ • a"});
        row("quotes", "> a\n> b\n> > c\n> - d", {"q a", "q + b", "qq c", "ql • d"});
        row("quote in a list", "- > a", {"l • ", "lq a"});
        row("rule", "a\n\n---\n\nb", {"a", "rule", "b"});
        row("fenced code", "```cpp\nint a;\n\n  b < c;\n```", {"code int a;", "code + ", "code$ +   b < c;"});
        row("code with an empty first line", "```\n\na\n```", {"code ", "code$ + a"});
        row("unclosed fence", "a\n```\n**b**", {"a", "code$ **b**"});
        row("indented code", "    a\n    b", {"code a", "code$ + b"});
        row("table", "|a|b|\n|---|---:|\n|*c*|`d`|\n|e|\n\nf",
            {"table a|to the right b/i{c}|to the right c{d}/e|to the right ", "f"});
        row("bare address", "see https://b.org/c_d, or so", {"see <https://b.org/c_d>{https://b.org/c_d}, or so"});
        row("no bare script", "javascript:alert(1) www.b.org b@c.org", {"javascript:alert(1) www.b.org b@c.org"});
    }

    void readsMarkdown()
    {
        QFETCH(QString, markdown);
        QFETCH(QStringList, lines);

        QCOMPARE(described(readMarkdown(markdown)), lines);
    }

    void showsVerbatimTextAsItStands()
    {
        const QStringList lines = {"+ **a** <b>", "+ ", "+ # c"};
        QCOMPARE(described(readVerbatim("**a** <b>\n\n# c")), lines);
    }

    void survivesDeepAndLongTexts_data()
    {
        QTest::addColumn<QString>("markdown");

        QTest::newRow("quotes in quotes") << QStringLiteral(">").repeated(5000) + u'a';
        QTest::newRow("lists in lists") << QStringLiteral("- ").repeated(5000) + u'a';
        QTest::newRow("brackets") << QStringLiteral("[").repeated(50000) + u'a';
        QTest::newRow("asterisks") << QStringLiteral("*a _b ").repeated(20000);
        QTest::newRow("backticks") << QStringLiteral("`a``b").repeated(20000) + u'a';
        QTest::newRow("one long line") << QString(2000000, u'a');
        QTest::newRow("table of many cells") << QStringLiteral("|a").repeated(3000) + u'\n' +
                                                    QStringLiteral("|---").repeated(3000) +
                                                    QStringLiteral("\n|a").repeated(3000);
        QTest::newRow("names of characters") << [] {
            QString all;
            for (int i = 0; i < 20000; ++i)
                all += QStringLiteral("&name%1;").arg(i);
            return all;
        }();
        QTest::newRow("half a surrogate pair") << QString(QChar(0xd83d)) + u'a';
    }

    void survivesDeepAndLongTexts()
    {
        QFETCH(QString, markdown);

        const QList<MarkdownLine> lines = readMarkdown(markdown);

        QVERIFY(!lines.isEmpty());
        QVERIFY(described(lines.last()).contains(u'a'));
    }
};

QTEST_GUILESS_MAIN(MarkdownTest)
#include "tst_markdown.moc"
