// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The text of a message as the views show it.

#include "ui/messagetext.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <memory>

Q_IMPORT_QML_PLUGIN(org_lumora_uiPlugin)

using namespace lumora;

namespace {

const char *const mixedText =
    "# One *two*\n\nThree **four** `five`\nsix\n\n- a\n- b\n  1. [c](https://d.org)\n\n> e\n\n---\n\n"
    "```\nint a;\n\nint b;\n```\n\n| a | b |\n|---|--:|\n| c | *d* |\n| e | f |\n\nSeven";

} // namespace

class MessageTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_engine.addImportPath(QStringLiteral(":/qt/qml")); }
    void init() { m_view = makeView(); }

    void aGrowingTextEndsAsOneWrittenAtOnce()
    {
        const QString whole = QString::fromUtf8(mixedText);
        m_view->setProperty("isGrowing", true);
        for (qsizetype length = 1; length <= whole.size(); ++length)
            write(whole.left(length));
        m_view->setProperty("isGrowing", false);

        QVERIFY(looksAs(whole));
    }

    void anyTextCanFollowAnyOther()
    {
        const QStringList texts{
            {},
            "One",
            "One two\n\nthree",
            "**One**",
            "- One\n- two",
            "# One",
            "```\nOne\n```",
            "> One",
            "|One|\n|---|\n|two|",
            "|One|\n|---|\n|three|\n|four|",
            "|One|two|\n|---|---|\n|three|four|",
            "---",
            "\u05d0",
            QString::fromUtf8(mixedText),
        };
        for (const QString &before : texts) {
            for (const QString &after : texts) {
                write(before);
                write(after);
                QVERIFY2(looksAs(after), qPrintable(before + " -> " + after));
            }
        }
    }

    void whatStaysIsNotTouched_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");

        QTest::newRow("plain") << "One\n\ntwo thr"
                               << "One\n\ntwo three\n\nfour";
        QTest::newRow("open style") << "One **two thr"
                                    << "One **two three** four";
        QTest::newRow("code") << "```\none\ntwo"
                              << "```\none\ntwo\nthree";
    }

    /// The selection is made backwards, and reaches to the end of what is there.
    void whatStaysIsNotTouched()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        m_view->setProperty("isGrowing", true);
        write(before);
        const int length = m_view->property("length").toInt();
        const int lastLine = document()->lastBlock().position();
        QMetaObject::invokeMethod(m_view.get(), "select", Q_ARG(int, length), Q_ARG(int, 1));
        const QString selected = m_view->property("selectedText").toString();
        int firstTouched = INT_MAX;
        connect(document(), &QTextDocument::contentsChange, this,
                [&](int position) { firstTouched = std::min(firstTouched, position); });

        write(after);

        QCOMPARE(m_view->property("selectedText").toString(), selected);
        QCOMPARE(m_view->property("cursorPosition").toInt(), 1);
        QVERIFY(m_view->property("length").toInt() > length);
        QVERIFY2(firstTouched >= lastLine, qPrintable(QString::number(firstTouched)));
    }

    void copiesWhatOneWouldWrite_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("copied");

        QTest::newRow("styles") << "One **two** `three` [four](https://a.org)"
                                << "One two three four";
        QTest::newRow("paragraphs") << "One\ntwo\n\nthree"
                                    << "One\ntwo\n\nthree";
        QTest::newRow("lists") << "# A\n- one\n- [x] two\n  1. three"
                               << "A\n\n• one\n☑ two\n  1. three";
        QTest::newRow("code") << "```\nif a:\n    b\n```"
                              << "if a:\n    b";
        QTest::newRow("table") << "|a|b|\n|---|---|\n|c|d|\n\ne"
                               << "a\tb\nc\td\n\ne";
        QTest::newRow("rule") << "a\n\n---\n\nb"
                              << "a\n\n---\n\nb";
    }

    void copiesWhatOneWouldWrite()
    {
        QFETCH(QString, markdown);
        write(markdown);
        QMetaObject::invokeMethod(m_view.get(), "selectAll");

        m_writer->copy(m_view->property("selectionStart").toInt(), m_view->property("selectionEnd").toInt());
        QTEST(QGuiApplication::clipboard()->text(), "copied");
    }

    void copiesAPartOfALine()
    {
        write("One\n\n- two three\n- four");
        m_writer->copy(8, 15);
        QCOMPARE(QGuiApplication::clipboard()->text(), "o three");
    }

    void eachLineHasItsOwnDirection()
    {
        write("Hello\n\u05e9\u05dc\u05d5\u05dd\n- \u0645\u0631\u062d\u0628\u0627\n\n```\n\u05e9\n```");

        QList<Qt::LayoutDirection> directions;
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
            directions << block.textDirection();
        QCOMPARE(directions,
                 QList<Qt::LayoutDirection>({Qt::LeftToRight, Qt::RightToLeft, Qt::RightToLeft, Qt::LeftToRight}));
    }

    void aWordChangesNoLinesHeight()
    {
        write("One two");
        const qreal plain = m_view->implicitHeight();

        write("One `two` **three** \u4e2d\u6587 \u05d0");
        QCOMPARE(m_view->implicitHeight(), plain);
    }

    void linksAndCodeFollowTheColors()
    {
        write("[a](https://example.org)`b`");
        m_writer->setLinkColor(Qt::red);
        m_writer->setCodeColor(Qt::yellow);

        QTextCursor cursor(document());
        cursor.setPosition(1);
        QCOMPARE(cursor.charFormat().anchorHref(), "https://example.org");
        QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::red));
        cursor.setPosition(2);
        QCOMPARE(cursor.charFormat().background().color(), QColor(Qt::yellow));
        QCOMPARE(cursor.charFormat().isAnchor(), false);
    }

    void groundsAndBarsStandBehindTheirText()
    {
        write("a\n\n> b\n\n```\nc\nd\n```\n\n---");
        QList<QRectF> areas;
        for (const QQuickItem *item : m_view->childItems())
            areas << item->property("area").toRectF();

        QCOMPARE(areas.size(), 3);
        const auto covers = [&](const QRectF &area, int line) {
            const QTextBlock block = document()->findBlockByNumber(line);
            const QRectF text = document()->documentLayout()->blockBoundingRect(block);
            return area.top() <= text.top() && area.bottom() >= text.bottom();
        };
        QVERIFY(covers(areas.at(0), 1) && !covers(areas.at(0), 0) && !covers(areas.at(0), 2));
        QVERIFY(covers(areas.at(1), 2) && covers(areas.at(1), 3) && !covers(areas.at(1), 1));
        QCOMPARE(areas.at(2).height(), 1);
        write("a");
        QVERIFY(m_view->childItems().isEmpty());
    }

    void nothingIsLoaded()
    {
        write("![a](https://example.org/a.png) <img src=\"file:///b.png\"> \uFFFC");

        for (const QTextFormat &format : document()->allFormats())
            QVERIFY(!format.isImageFormat());
        QCOMPARE(document()->toPlainText(), "a <img src=\"file:///b.png\"> \uFFFD");
    }

private:
    std::unique_ptr<QQuickItem> makeView()
    {
        QQmlComponent component(&m_engine);
        component.setData("import org.lumora.ui\nMessageTextView { content: ''; isGrowing: false; width: 300 }", {});
        std::unique_ptr<QQuickItem> view(qobject_cast<QQuickItem *>(component.create()));
        if (!view)
            qFatal("%s", qPrintable(component.errorString()));
        m_writer = view->findChild<MessageText *>();
        return view;
    }

    void write(const QString &text) const { m_view->setProperty("content", text); }
    QTextDocument *document() const { return m_writer->document()->textDocument(); }

    /// Whether what is shown is exactly what this text gives where nothing was before.
    bool looksAs(const QString &text)
    {
        const QString html = document()->toHtml();
        const qreal height = m_view->implicitHeight();
        const std::unique_ptr<QQuickItem> shown = std::exchange(m_view, makeView());
        write(text);
        const bool isSame = html == document()->toHtml() && qFuzzyCompare(height, m_view->implicitHeight());
        m_view = makeView();
        return isSame;
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_view;
    MessageText *m_writer = nullptr; ///< the view's
};

QTEST_MAIN(MessageTextTest)
#include "tst_messagetext.moc"
