// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/filedialogs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class FileDialogsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void portalIsAskedWhereThereIsOne_data()
    {
        QTest::addColumn<bool>("hasBus");
        QTest::addColumn<bool>("hasPortal");
        QTest::addColumn<QByteArray>("chosen"); // by the user
        QTest::addColumn<QByteArray>("theme");

        QTest::newRow("both") << true << true << QByteArray() << QByteArray("xdgdesktopportal");
        QTest::newRow("no bus") << false << true << QByteArray() << QByteArray();
        QTest::newRow("no portal") << true << false << QByteArray() << QByteArray();
        QTest::newRow("another choice") << true << true << QByteArray("gtk3") << QByteArray("gtk3");
    }

    void portalIsAskedWhereThereIsOne()
    {
        QFETCH(bool, hasBus);
        QFETCH(bool, hasPortal);
        QFETCH(QByteArray, chosen);
        QFETCH(QByteArray, theme);
        const QTemporaryDir system;
        QVERIFY(QDir(system.path()).mkpath("dbus-1/services"));
        if (hasPortal) {
            QFile service(system.filePath("dbus-1/services/org.freedesktop.portal.Desktop.service"));
            QVERIFY(service.open(QIODevice::WriteOnly));
        }
        qputenv("XDG_DATA_DIRS", system.path().toLocal8Bit());
        qputenv("XDG_DATA_HOME", system.filePath("home").toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", system.path().toLocal8Bit());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        if (hasBus)
            qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/bus");
        qputenv("QT_QPA_PLATFORMTHEME", chosen);

        preferPortalFileDialogs();

        QCOMPARE(qgetenv("QT_QPA_PLATFORMTHEME"), theme);
    }
};

QTEST_APPLESS_MAIN(FileDialogsTest)
#include "tst_filedialogs.moc"
