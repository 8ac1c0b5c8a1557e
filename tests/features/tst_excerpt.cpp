// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/excerpt.h"

#include <QTest>

using namespace lumora;

class ExcerptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhereTheWordsStand_data();
    void showsWhereTheWordsStand();
};

void ExcerptTest::showsWhereTheWordsStand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("shown");
    const auto add = [](const char *name, const QString &text, const QString &query, const QString &shown) {
        QTest::newRow(name) << text << query << shown;
    };

    const QString family = QStringLiteral("👨‍👩‍👧‍👦");
    const QString a = QString("a ").repeated(2500);
    add("early match", QString(50, '.') + "Pets" + a, "pets", QString(50, '.') + "Pets" + a.left(946));
    add("late match", a + "Pets" + a, "pets", a.right(200) + "Pets" + a.left(796));
    add("near the end", a + " pets \n", "PETS", a.right(199) + " pets \n");
    add("first word of the query", "dogs " + a + "cats" + a, "cats dogs", a.right(200) + "cats" + a.left(796));
    add("first word that occurs", a + "dogs" + a, "cats dogs", a.right(200) + "dogs" + a.left(796));
    add("short words do not count", a + "of" + a, "of a", a.left(1000));
    add("punctuation only", a + "?!", "?!", a.left(1000));
    add("characters, not code units", family.repeated(300) + "pets" + family.repeated(900), "pets",
        family.repeated(200) + "pets" + family.repeated(796));
    add("three characters are enough", a + "日本語", "日本語", a.right(200) + "日本語");
    add("two do not, however long", family.repeated(1200) + "ne\u0301", "ne\u0301", family.repeated(1000));
    const QString marks(1000000, QChar(0x0301));
    add("no more than so many code units", marks + " pets " + marks, "pets", " pets");
    add("no text", "", "pets", "");
}

void ExcerptTest::showsWhereTheWordsStand()
{
    QFETCH(QString, text);
    QFETCH(QString, query);
    QFETCH(QString, shown);
    QVERIFY(excerpt(text, query) == shown);
}

QTEST_APPLESS_MAIN(ExcerptTest)
#include "tst_excerpt.moc"
