// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/textrules.h"

#include <QTest>

using namespace lumora;

class TextRulesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trimsExactlyWhiteSpaceAndLineBreaks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("trimmedText");

        const auto row = [](const char *name, const QString &text, const QString &result) {
            QTest::newRow(name) << text << result;
        };
        row("empty", QString(), QString());
        row("only white space", " \t\n\r\u00A0\u3000", QString());
        row("inner white space stays", "  a b\nc \n", "a b\nc");
        row("every line break", "\n\v\f\r\u0085\u2028\u2029a\u2029\u2028\u0085\r\f\v\n", "a");
        row("category Zs", "\u00A0\u1680\u2003\u202F\u205F\u3000a\u2000", "a");
        row("zero-width space is a character", "\u200Ba\u200B", "\u200Ba\u200B");
        row("other control characters stay", "\u001Fa\b", "\u001Fa\b");
    }

    void trimsExactlyWhiteSpaceAndLineBreaks()
    {
        QFETCH(QString, text);
        QFETCH(QString, trimmedText);
        QCOMPARE(trimmed(text).toString(), trimmedText);
    }

    void lowercases_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("lower");

        const auto row = [](const char *name, const QString &text, const QString &result) {
            QTest::newRow(name) << text << result;
        };
        row("latin", "Read THIS Page", "read this page");
        row("final sigma", "ΟΔΟΣ", "οδος");
        row("one becomes two", "İ", "i\u0307");
        row("beyond the first plane", "𐐀", "𐐨");
    }

    void lowercases()
    {
        QFETCH(QString, text);
        QFETCH(QString, lower);
        QCOMPARE(lowercased(text), lower);
    }
};

QTEST_APPLESS_MAIN(TextRulesTest)
#include "tst_textrules.moc"
