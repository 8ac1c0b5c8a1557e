// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/dates.h"

#include <QTest>

#include <ctime>

using namespace lumora;

class DatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesDatesInFull_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("timeZone");
        QTest::addColumn<QStringList>("parts");

        QTest::newRow("American English")
            << "en_US"
            << "America/New_York" << QStringList{"Thursday", "July 16, 2026", "3:04:05", "PM", "Eastern Daylight Time"};
        QTest::newRow("German") << "de_DE"
                                << "Europe/Berlin"
                                << QStringList{"Donnerstag", "16. Juli 2026", "21:04:05",
                                               "Mitteleuropäische Sommerzeit"};
        QTest::newRow("Japanese") << "ja_JP"
                                  << "Asia/Tokyo"
                                  << QStringList{"2026年7月17日", "金曜日", "4時04分05秒", "日本標準時"};
        QTest::newRow("with an encoding") << "fr_FR.UTF-8"
                                          << "Europe/Paris" << QStringList{"jeudi 16 juillet 2026", "21:04:05"};
    }

    void writesDatesInFull()
    {
        QFETCH(QString, locale);
        QFETCH(QString, timeZone);
        QFETCH(QStringList, parts);

        constexpr double instant = 1784228645000.0; // 2026-07-16 19:04:05 UTC
        const QString text = fullDateTime(instant, locale, timeZone);
        for (const QString &part : parts)
            QVERIFY2(text.contains(part), qPrintable(text + " lacks " + part));
    }

    void followsTheUsersDateLocale()
    {
        qunsetenv("LC_ALL");
        qputenv("LANG", "en_US.UTF-8");
        qputenv("LC_TIME", "de_DE.UTF-8");
        QVERIFY(fullDateTime(0, {}, "Europe/Berlin").contains("Donnerstag, 1. Januar 1970"));
        qputenv("LC_ALL", "es_ES.UTF-8");
        QVERIFY(fullDateTime(0, {}, "Europe/Berlin").contains("jueves, 1 de enero de 1970"));
    }

    void understandsAZoneWithoutAName()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", "XYZ-5");
        tzset();
        const QString text = fullDateTime(0, "en_US");
        before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
        tzset();
        QVERIFY2(text.contains("5:00:00"), qPrintable(text));
    }
};

QTEST_APPLESS_MAIN(DatesTest)
#include "tst_dates.moc"
