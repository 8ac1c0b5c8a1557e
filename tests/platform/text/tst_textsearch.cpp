// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/textsearch.h"

#include <QTest>

using namespace lumora;

class TextSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWords_data();
    void findsWords();
    void findsTheFirstOccurrence_data();
    void findsTheFirstOccurrence();
    void foldsByTheLocale();
};

void TextSearchTest::findsWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("sentence") << "What's in B-12, 日本語?" << QStringList({"What", "s", "in", "B", "12", "日本語"});
    QTest::newRow("marks stay") << "cafe\u0301 \u0301x" << QStringList({"cafe\u0301", "x"});
    QTest::newRow("vowel signs stay") << "हिन्दी में" << QStringList({"हिन्दी", "में"});
    QTest::newRow("beyond the basic plane") << "𝒂b 👍 𝟙" << QStringList({"𝒂b", "𝟙"});
    QTest::newRow("other numbers") << "x² Ⅷ ½" << QStringList({"x²", "Ⅷ", "½"});
    QTest::newRow("joined and kept apart") << "می\u200Cخواهم \u200C" << QStringList({"می\u200Cخواهم"});
    QTest::newRow("none") << " .,!👍 " << QStringList();
}

void TextSearchTest::findsWords()
{
    QFETCH(QString, text);
    QFETCH(QStringList, found);
    QStringList result;
    for (const QStringView word : words(text))
        result.append(word.toString());
    QCOMPARE(result, found);
}

void TextSearchTest::findsTheFirstOccurrence_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("word");
    QTest::addColumn<qsizetype>("position");
    QTest::newRow("another case") << "The LEASE, a lease"
                                  << "Lease" << qsizetype(4);
    QTest::newRow("inside a word") << "released"
                                   << "lease" << qsizetype(2);
    QTest::newRow("accents count") << "resume résumé"
                                   << "résumé" << qsizetype(7);
    QTest::newRow("accents encoded otherwise") << "a re\u0301sume\u0301"
                                               << "RÉSUMÉ" << qsizetype(2);
    QTest::newRow("Cyrillic") << "Дом и ДОГОВОР"
                              << "договор" << qsizetype(6);
    QTest::newRow("absent") << "lea se"
                            << "lease" << qsizetype(-1);
    const QString ideographs(100'000, u'日');
    QTest::newRow("far on") << QString("a ").repeated(50'000) + "lease"
                            << "lease" << qsizetype(100'000);
    QTest::newRow("in a long run") << ideographs + "lease x"
                                   << "lease" << qsizetype(100'000);
    QTest::newRow("behind a long run") << ideographs + " " + ideographs + " lease"
                                       << "lease" << qsizetype(200'002);
    QTest::newRow("no text") << ""
                             << "lease" << qsizetype(-1);
    QTest::newRow("half a surrogate pair") << "a" + QString(QChar(0xD83D)) + "lease"
                                           << "lease" << qsizetype(2);
}

void TextSearchTest::findsTheFirstOccurrence()
{
    QFETCH(QString, text);
    QFETCH(QString, word);
    QFETCH(qsizetype, position);
    QCOMPARE(firstOccurrence(text, word), position);
}

void TextSearchTest::foldsByTheLocale()
{
    QCOMPARE(caseFolded(u"STRASSE", "de_DE"), caseFolded(u"Straße", "de_DE"));
    QCOMPARE(caseFolded(u"E\u0301", "en_GB"), caseFolded(u"é", "en_GB"));
    QCOMPARE(caseFolded(u"I", "en_GB"), "i");
    QCOMPARE(caseFolded(u"I", "tr_TR"), "ı");
}

QTEST_APPLESS_MAIN(TextSearchTest)
#include "tst_textsearch.moc"
