// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/timeofday.h"

#include <QTest>

using namespace lumora;

class TimeOfDayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAsTheLocaleDoes_data();
    void writesAsTheLocaleDoes();
    void tellsTheSecondsAndNoZoneInEveryLocale();
};

void TimeOfDayTest::writesAsTheLocaleDoes_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    QTest::newRow("United States") << "en_US"
                                   << "3:04:05 PM";
    QTest::newRow("Germany") << "de_DE"
                             << "15:04:05";
    QTest::newRow("Finland") << "fi_FI"
                             << "15.04.05";
    QTest::newRow("French Canada") << "fr_CA"
                                   << "15 h 04 min 05 s";
    QTest::newRow("C") << "C"
                       << "15:04:05";
}

void TimeOfDayTest::writesAsTheLocaleDoes()
{
    QFETCH(QString, locale);

    QTEST(timeOfDay(QTime(15, 4, 5), QLocale(locale)), "text");
}

void TimeOfDayTest::tellsTheSecondsAndNoZoneInEveryLocale()
{
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    QVERIFY(locales.size() > 100);
    for (const QLocale &locale : locales) {
        const QTime time(15, 41, 57);
        const QString text = timeOfDay(time, locale);
        QVERIFY2(text.contains(locale.toString(41)) && text.contains(locale.toString(57)),
                 qPrintable(locale.name() + text));
        QVERIFY2(!text.contains(locale.toString(time, QStringLiteral("t"))), qPrintable(locale.name() + text));
    }
}

int main(int argc, char *argv[])
{
    // A zone whose name is part of no language.
    qputenv("TZ", "Asia/Kathmandu");
    QCoreApplication application(argc, argv);
    TimeOfDayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_timeofday.moc"
