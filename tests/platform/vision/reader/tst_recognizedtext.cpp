// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/ocrlanguages.h"
#include "platform/vision/reader/recognizedtext.h"

#include <QTest>

using namespace lumora;

class RecognizedTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsWriting_data();
    void keepsWriting();
    void choosesLanguages_data();
    void choosesLanguages();
};

void RecognizedTextTest::keepsWriting_data()
{
    using Lines = QList<RecognizedLine>;
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lines and paragraphs")
        << Lines{{"One\n", 95, false}, {"two.\n\n", 95, true}, {"Three.\n", 95, true}} << "One\ntwo.\n\nThree.";
    QTest::newRow("specks at the edges") << Lines{{"|  ~ .", 45, true}, {"Text", 95, true}, {"— —", 30, true}}
                                         << "Text";
    QTest::newRow("specks between paragraphs")
        << Lines{{"One.", 95, true}, {"° ' .", 20, false}, {"Two.", 95, false}} << "One.\n\nTwo.";
    QTest::newRow("letters that are none") << Lines{{"ae rl Wy oon", 22, true}} << "";
    QTest::newRow("a clear symbol") << Lines{{"5", 96, false}, {"€ 7.50", 94, false}, {"?!", 95, true}}
                                    << "5\n€ 7.50\n?!";
    QTest::newRow("a word in doubt") << Lines{{"Grüße", 58, true}} << "Grüße";
    QTest::newRow("empty lines") << Lines{{"", 95, false}, {" \n", 95, true}} << "";
}

void RecognizedTextTest::keepsWriting()
{
    QFETCH(QList<RecognizedLine>, lines);
    QTEST(readableText(lines, 40), "expected");
    QCOMPARE(readableText(lines, 97), QString());
}

void RecognizedTextTest::choosesLanguages_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("installed");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *user, const char *installed, const char *expected) {
        QTest::addRow("%s of %s", user, installed) << user << installed << expected;
    };
    add("en-US", "eng osd", "eng");
    add("de-AT de", "deu eng osd", "deu eng");
    add("de-AT de", "eng osd", "eng");
    add("en-GB", "deu equ eng jpn jpn_vert osd", "eng deu jpn");
    add("en-GB fr", "afr ara deu eng fra jpn kor osd", "eng fra");
    add("zh-TW", "chi_sim chi_tra eng", "chi_tra eng chi_sim");
    add("zh-CN", "chi_sim eng", "chi_sim eng");
    add("nb-NO", "eng nor", "nor eng");
    add("sr-Latn-RS", "eng srp srp_latn", "srp_latn eng srp");
    add("de fr it es pt", "deu eng fra ita por spa", "deu fra ita eng");
    add("C", "eng", "eng");
    add("en", "fra osd", "fra");
    add("en", "osd", "");
}

void RecognizedTextTest::choosesLanguages()
{
    QFETCH(QString, user);
    QFETCH(QString, installed);
    QFETCH(QString, expected);
    QCOMPARE(recognitionLanguages(user.split(u' '), installed.split(u' ')).join(u' '), expected);
}

QTEST_APPLESS_MAIN(RecognizedTextTest)
#include "tst_recognizedtext.moc"
