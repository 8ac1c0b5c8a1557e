// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/messagetext.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <memory>

using namespace lumora;

class MessageTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_text.reset();
        m_editor = makeEditor();
        m_text = std::make_unique<MessageText>();
        m_text->setDocument(documentOf(m_editor.get()));
    }

    void aGrowingTextEndsAsOneWrittenAtOnce_data()
    {
        QTest::addColumn<QString>("markdown");

        QTest::newRow("plain") << QStringLiteral("One two\nthree\n\nfour");
        QTest::newRow("styles that close late") << QStringLiteral("**One *two* three** `four` ~~five~~");
        QTest::newRow("list") << QStringLiteral("Here:\n\n- a\n- b\n  1. c\n  2. d\n\nDone.");
        QTest::newRow("code") << QStringLiteral("So:\n\n```\nint a;\n\nint b;\n```\nand **so**");
        QTest::newRow("heading from below") << QStringLiteral("One\n===\ntwo\n\n---\n\nthree");
        QTest::newRow("link from a later line") << QStringLiteral("[One][1]\n\ntwo\n\n[1]: https://example.org");
    }

    void aGrowingTextEndsAsOneWrittenAtOnce()
    {
        QFETCH(QString, markdown);
        for (qsizetype length = 1; length <= markdown.size(); ++length)
            m_text->setText(markdown.left(length));

        const std::unique_ptr<QObject> otherEditor = makeEditor();
        MessageText other;
        other.setText(markdown);
        other.setDocument(documentOf(otherEditor.get()));

        QCOMPARE(shown()->toHtml(), documentOf(otherEditor.get())->textDocument()->toHtml());
        QVERIFY(m_editor->property("implicitHeight").toReal() > 0);
        QCOMPARE(m_editor->property("implicitHeight"), otherEditor->property("implicitHeight"));
    }

    void whatStaysIsNotTouched()
    {
        m_text->setText("One\n\ntwo\n\nthr");
        int firstTouched = INT_MAX;
        connect(shown(), &QTextDocument::contentsChange, this,
                [&](int position) { firstTouched = std::min(firstTouched, position); });
        QTextCursor selection(shown());
        selection.setPosition(1);
        selection.setPosition(6, QTextCursor::KeepAnchor);

        m_text->setText("One\n\ntwo\n\nthree\n\nfour");

        QCOMPARE(firstTouched, 7);
        QCOMPARE(selection.selectedText(), "ne\u2029tw");
        QCOMPARE(shown()->toPlainText(), "One\ntwo\nthree\nfour");
    }

    void eachLineHasItsOwnDirection()
    {
        m_text->setText("Hello\n\u05e9\u05dc\u05d5\u05dd\n- \u0645\u0631\u062d\u0628\u0627\n\n```\n\u05e9\n```");

        QList<Qt::LayoutDirection> directions;
        for (QTextBlock block = shown()->begin(); block.isValid(); block = block.next())
            directions << block.textDirection();
        QCOMPARE(directions,
                 QList<Qt::LayoutDirection>({Qt::LeftToRight, Qt::RightToLeft, Qt::RightToLeft, Qt::LeftToRight}));
    }

    void linksAndCodeFollowTheColors()
    {
        m_text->setText("[a](https://example.org)`b`");
        m_text->setLinkColor(Qt::red);
        m_text->setCodeColor(Qt::yellow);

        QTextCursor cursor(shown());
        cursor.setPosition(1);
        QCOMPARE(cursor.charFormat().anchorHref(), "https://example.org");
        QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::red));
        cursor.setPosition(2);
        QCOMPARE(cursor.charFormat().background().color(), QColor(Qt::yellow));
        QCOMPARE(cursor.charFormat().isAnchor(), false);
    }

    void nothingIsLoaded()
    {
        m_text->setText("![a](https://example.org/a.png) <img src=\"file:///b.png\"> \uFFFC");

        for (const QTextFormat &format : shown()->allFormats())
            QVERIFY(!format.isImageFormat());
        QCOMPARE(shown()->toPlainText(), "a <img src=\"file:///b.png\"> \uFFFD");
    }

private:
    /// A text editor, as a view has it.
    std::unique_ptr<QObject> makeEditor()
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nTextEdit { textFormat: TextEdit.RichText; width: 300 }", {});
        std::unique_ptr<QObject> editor(component.create());
        if (!editor)
            qFatal("%s", qPrintable(component.errorString()));
        return editor;
    }

    static QQuickTextDocument *documentOf(QObject *editor)
    {
        return editor->property("textDocument").value<QQuickTextDocument *>();
    }
    QTextDocument *shown() const { return documentOf(m_editor.get())->textDocument(); }

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_editor;
    std::unique_ptr<MessageText> m_text;
};

QTEST_MAIN(MessageTextTest)
#include "tst_messagetext.moc"
