// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/graphemes.h"

#include <QTest>

using namespace lumora;

class GraphemesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsAndCutsCharacters_data()
    {
        QTest::addColumn<QStringList>("characters");

        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("latin") << QStringList{"H", "e", "l", "l", "o", " ", "!"};
        QTest::newRow("line breaks") << QStringList{"a", "\n", "b", "\r\n", "\r\n", "\n", "\r", "c", "\r"};
        QTest::newRow("combining marks") << QStringList{"e\u0301", "a\u0323\u0302", "x"};
        QTest::newRow("a mark at the start") << QStringList{"\u0301", "a"};
        QTest::newRow("a mark on a blank") << QStringList{":", " \u0301", "a"};
        QTest::newRow("family") << QStringList{"👨‍👩‍👧‍👦", "👍🏽", "❤️", "1️⃣"};
        QTest::newRow("flags") << QStringList{"🇩🇪", "🇯🇵", "🇫🇷", "🇦"};
        QTest::newRow("conjoining jamo") << QStringList{"\u1112\u1161\u11AB", "한", "글"};
        QTest::newRow("kana and ideographs") << QStringList{"か\u3099", "日", "本", "ア"};
        QTest::newRow("devanagari") << QStringList{"न", "म", "स्ते"};
        QTest::newRow("lone surrogates") << QStringList{QString(QChar(0xD83D)), "a", QString(QChar(0xDE00))};
        QTest::newRow("of all kinds") << QStringList{
            "x", " ", "日", "e\u0301", "e\u0301", "👨‍👩‍👧‍👦", "🇩🇪", "\r\n", "한", "\u1112\u1161", "x"};
        QTest::newRow("zero-width joiner after latin") << QStringList{"a\u200D", "b"};
    }

    void countsAndCutsCharacters()
    {
        QFETCH(QStringList, characters);
        const QString text = characters.join(QString());

        QCOMPARE(characterCount(text), characters.size());
        for (qsizetype n = 0; n <= characters.size() + 1; ++n) {
            QCOMPARE(firstCharacters(text, n).toString(), QStringList(characters.mid(0, n)).join(QString()));
            QCOMPARE(lastCharacters(text, n).toString(),
                     QStringList(characters.mid(std::max(0LL, characters.size() - n))).join(QString()));
        }
    }

    void boundsTheUnitsOfCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("first"); // code units of the first ten characters, bounded
        QTest::addColumn<qsizetype>("last");
        const QString marks(1000000, QChar(0x0301));
        const QString wide = QString("\U0001D165").repeated(500000); // marks of two units
        const QString families = QString("👨‍👩‍👧‍👦").repeated(400);
        QTest::newRow("ordinary") << QString(400, 'a') << qsizetype(10) << qsizetype(10);
        QTest::newRow("families") << families << qsizetype(110) << qsizetype(110);
        QTest::newRow("one character") << "a" + marks << qsizetype(320) << qsizetype(320);
        QTest::newRow("one character of pairs") << "a" + wide << qsizetype(319) << qsizetype(320);
        QTest::newRow("ends in one") << "lease" + marks << qsizetype(4) << qsizetype(320);
        QTest::newRow("begins with one") << "a" + marks + "lease" << qsizetype(320) << qsizetype(5);
    }

    void boundsTheUnitsOfCharacters()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, first);
        QFETCH(qsizetype, last);
        QCOMPARE(firstCharactersBounded(text, 10), QStringView(text).first(first));
        QCOMPARE(lastCharactersBounded(text, 10), QStringView(text).last(last));
    }

    void looksOnlyAtTheEnd()
    {
        const QString emoji = "👨‍👩‍👧‍👦";
        const QString text = QString(5'000'000, u'x') + emoji + "end";
        QCOMPARE(lastCharacters(text, 4).toString(), emoji + "end");
        QCOMPARE(lastCharacters(text, 8000).size(), 8000 - 1 + emoji.size());

        const QString flags = QStringLiteral("🇩🇪").repeated(1'000'000);
        QCOMPARE(lastCharacters(flags, 8000), QStringLiteral("🇩🇪").repeated(8000));
        const QString halfFlagMore = flags + "🇫";
        QCOMPARE(lastCharacters(halfFlagMore, 2).toString(), "🇩🇪🇫");
    }
};

QTEST_APPLESS_MAIN(GraphemesTest)
#include "tst_graphemes.moc"
