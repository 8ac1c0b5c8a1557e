// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/timeofday.h"

#include <QTest>

using namespace lumora;

class TimeOfDayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAsTheLocaleDoes_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");

        const auto row = [](const char *name, const QString &locale, const QString &text) {
            QTest::newRow(name) << locale << text;
        };
        row("United States", "en_US", "3:04:05 PM");
        row("Germany", "de_DE", "15:04:05");
        row("Finland", "fi_FI", "15.04.05");
        row("French Canada", "fr_CA", "15 h 04 min 05 s");
        row("C", "C", "15:04:05");
    }

    void writesAsTheLocaleDoes()
    {
        QFETCH(QString, locale);

        QTEST(timeOfDay(QTime(15, 4, 5), QLocale(locale)), "text");
    }

    void tellsTheSecondsAndNoZoneInEveryLocale()
    {
        const QList<QLocale> locales =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
        QVERIFY(locales.size() > 100);
        for (const QLocale &locale : locales) {
            const QTime time(15, 41, 57);
            const QString text = timeOfDay(time, locale);
            QVERIFY2(text.contains(locale.toString(41)) && text.contains(locale.toString(57)),
                     qPrintable(locale.name() + text));
            QVERIFY2(!text.contains(locale.toString(time, "t")), qPrintable(locale.name() + text));
        }
    }
};

int main(int argc, char *argv[])
{
    // A zone whose name is part of no language.
    qputenv("TZ", "Asia/Kathmandu");
    QCoreApplication application(argc, argv);
    TimeOfDayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_timeofday.moc"
