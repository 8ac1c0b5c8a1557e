// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/growingmarkdown.h"
#include "ui/markdown.h"

#include <QTest>

using namespace lumora;

namespace {

/// A character with all that makes up its look, but for where a link leads.
struct ShownCharacter
{
    QChar unit;
    MarkdownLine::Kind kind;
    int depth;
    InlineStyles styles;

    bool operator==(const ShownCharacter &) const = default;
};

void show(QList<ShownCharacter> &shown, const MarkdownLine &line, const QList<MarkdownSpan> &spans)
{
    for (const MarkdownSpan &span : spans)
        for (const QChar unit : span.text)
            shown.append({unit, line.kind, line.depth, span.styles});
}

/// All that one sees of a text, in reading order.
QList<ShownCharacter> shown(const QString &markdown)
{
    QList<ShownCharacter> all;
    for (const MarkdownLine &line : readMarkdown(markdown)) {
        show(all, line, {{line.marker}});
        show(all, line, line.spans);
        for (const QList<MarkdownCell> &row : line.table)
            for (const MarkdownCell &cell : row)
                show(all, line, cell.spans);
        if (line.kind != MarkdownLine::Kind::table)
            all.append({u'\n', line.kind, line.depth, {}});
    }
    return all;
}

QString textOf(const QList<ShownCharacter> &characters)
{
    QString text;
    for (const ShownCharacter &each : characters)
        text += each.unit;
    return text;
}

} // namespace

class GrowingMarkdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsShownStays_data()
    {
        QTest::addColumn<QString>("markdown");

        QTest::newRow("styles") << "Some *emphasis*, **strong text**, ***both*** and ~~struck~~ `code` here.";
        QTest::newRow("styles in styles") << "**strong with *emphasis* and `code * _` in it** _and more_";
        QTest::newRow("no styles") << "5 * 3 is 15, snake_case_name, 2**3, ~5 and a \\* b\\_";
        QTest::newRow("over a line break") << "**strong\nover a line** and on\n*so is this*";
        QTest::newRow("ideographs") << "\u4e2d\u6587**\u52a0\u7c97**\u6587\u672c";
        QTest::newRow("link")
            << "See **[the page](https://example.org/a_b?c=d)** and ![a picture](https://e.org/x.png).";
        QTest::newRow("lists") << "Here:\n\n- **One** and\n- two\n  1. deep\n  2. *deeper*\n- [x] done\n\nOn.";
        QTest::newRow("list at once") << "Text\n- **one**\n- two\n\n1. first\n2. second";
        QTest::newRow("headings") << "# One\n\nText\n\n## Two *three*\n\nText";
        QTest::newRow("code") << "So:\n\n```cpp\nint *a;\n\n`b`\n```\nand **so** on ``x ` y`` end";
        QTest::newRow("other fence") << "~~~~\n~~~\n```\n~~~~\nDone";
        QTest::newRow("quotes") << "> A *quote*\n> goes on\n> > deeper\n\nand ends";
        QTest::newRow("rule") << "Above\n\n---\n\nbelow";
        QTest::newRow("table") << "All:\n\n| Name | *Size* |\n|:---|---:|\n| a | **1** |\n| `b` | 2 |\n\nThat is all.";
        QTest::newRow("bars") << "|x| is never negative";
    }

    /// Nothing that has been shown moves, goes away or takes another look as the rest arrives.
    void whatIsShownStays()
    {
        QFETCH(QString, markdown);
        const QList<ShownCharacter> whole = shown(markdown);

        for (qsizetype length = 1; length < markdown.size(); ++length) {
            QList<ShownCharacter> part = shown(withEndClosed(markdown.left(length)));
            if (!part.isEmpty() && part.last().unit == u'\n')
                part.removeLast();
            QVERIFY2(part == whole.first(std::min(part.size(), whole.size())),
                     qPrintable(markdown.left(length) + " shows " + textOf(part)));
        }
        QCOMPARE(textOf(shown(withEndClosed(markdown))), textOf(whole));
    }

    void keepsUp_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("seen");

        QTest::newRow("open strong") << "a **b c"
                                     << "a b c\n";
        QTest::newRow("open code") << "a `b *c"
                                   << "a b *c\n";
        QTest::newRow("half a mark") << "a **b*"
                                     << "a b\n";
        QTest::newRow("address of a link") << "a [b](https://c"
                                           << "a b\n";
        QTest::newRow("open fence") << "```\na *b"
                                    << "a *b\n";
        QTest::newRow("row of a table") << "|a|b|\n|---|---|\n|c|d"
                                        << "abcd";
    }

    /// What is open is shown at once, without its marks.
    void keepsUp()
    {
        QFETCH(QString, markdown);

        QTEST(textOf(shown(withEndClosed(markdown))), "seen");
    }
};

QTEST_GUILESS_MAIN(GrowingMarkdownTest)
#include "tst_growingmarkdown.moc"
