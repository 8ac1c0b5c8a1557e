// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/inlinemarkdown.h"

#include <QTest>

using namespace lumora;

namespace {

QString described(const MarkdownSpan &span)
{
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
    return marks.isEmpty() ? span.text : marks + u'{' + span.text + u'}';
}

/// One line of the result as one text: what kind of line, its depth and its marker, then its spans.
QString described(const MarkdownLine &line)
{
    QString text;
    if (line.kind == MarkdownLine::Kind::heading)
        text += "heading ";
    if (line.kind == MarkdownLine::Kind::code)
        text += "code ";
    if (line.kind == MarkdownLine::Kind::rule)
        text += "rule";
    if (line.depth > 0)
        text += u'>' + QString::number(line.depth) + u' ';
    if (!line.marker.isEmpty())
        text += line.marker + u' ';
    if (line.continues)
        text += "+ ";
    for (const MarkdownSpan &span : line.spans)
        text += described(span);
    return text;
}

QStringList described(const QList<MarkdownLine> &lines)
{
    QStringList texts;
    for (const MarkdownLine &line : lines)
        texts << described(line);
    return texts;
}

} // namespace

class InlineMarkdownTest : public QObject
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
        row("heading", "# a *b*", {"heading a i{b}"});
        row("heading over a line", "a\n===\nb", {"heading a", "b"});
        row("no heading without a blank", "#a", {"#a"});
        row("bulleted list", "- a\n- b", {">1 • a", ">1 • b"});
        row("numbered list", "3. a\n4. b", {">1 3. a", ">1 4. b"});
        row("nested list", "- a\n  1. b", {">1 • a", ">2 1. b"});
        row("loose list", "- a\n\n  b\n\n- c", {">1 • a", ">1 b", ">1 • c"});
        row("list item of two lines", "- a\n  b", {">1 • a", ">1 + b"});
        row("empty list item", "-\n- a", {">1 • ", ">1 • a"});
        row("quote", "> a\n> b", {">1 a", ">1 + b"});
        row("rule", "a\n\n---\n\nb", {"a", "rule", "b"});
        row("fenced code", "```cpp\nint a;\n\n  b < c;\n```", {"code int a;", "code + ", "code +   b < c;"});
        row("code with an empty first line", "```\n\na\n```", {"code ", "code + a"});
        row("unclosed fence", "a\n```\n**b**", {"a", "code **b**"});
        row("indented code", "    a\n    b", {"code a", "code + b"});
        row("table", "|a|b|\n|-|-|", {"|a|b|", "+ |-|-|"});

        row("a list that arrives", "a\n-", {"a", "+ -"});
        row("a rule that arrives", "a\n--", {"a", "+ --"});
        row("an equals sign alone", "a\n=", {"a", "+ ="});
        row("a dash alone", "-", {">1 • "});
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

QTEST_GUILESS_MAIN(InlineMarkdownTest)
#include "tst_inlinemarkdown.moc"
