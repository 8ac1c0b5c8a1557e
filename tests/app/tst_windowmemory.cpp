// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/windowmemory.h"
#include "ui/windowtest.h"

#include <QSignalSpy>

using namespace lumora;

class WindowMemoryTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void keepsSizesFromOneStartToTheNext()
    {
        const QString file = m_fixture->data.filePath("state/Lumora/window.ini");
        {
            const MainWindow window(file);
            window.window()->resize(900, 640);
            window.window()->setProperty("sidebarWidth", 300);
        }
        QCOMPARE(WindowMemory(file).remembered(),
                 QVariantMap({{"width", 900}, {"height", 640}, {"sidebarWidth", 300}}));

        const MainWindow window(file);
        QCOMPARE(window.window()->size(), QSize(900, 640));
        QCOMPARE(window.window()->property("sidebarWidth"), QVariant(300.0));
    }

    void passesOverWhatMakesNoSense()
    {
        m_fixture->write("window.ini", "[General]\nwidth=-5\nheight=999999999\nsidebarWidth=wide\n\0\xFF");
        QCOMPARE(WindowMemory(m_fixture->path("window.ini")).remembered(), QVariantMap());
    }

    void leavesOutTheSizeOfAMaximisedWindow()
    {
        const QString file = m_fixture->data.filePath("window.ini");
        {
            const MainWindow window(file);
            QVERIFY(QTest::qWaitForWindowExposed(window.window()));
            QSignalSpy resized(window.window(), &QWindow::heightChanged);
            window.window()->resize(900, 640);
            QTRY_VERIFY(!resized.isEmpty());
            window.window()->showMaximized();
            QTRY_VERIFY(window.window()->width() != 900 || window.window()->height() != 640);
        }
        QCOMPARE(WindowMemory(file).remembered().value("height"), QVariant(640));
    }

    void looksForTheStateDirectory_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QByteArray>("home");
        QTest::addColumn<QString>("expected");

        QTest::newRow("by the variable") << QByteArray("/s") << QByteArray("/h") << "/s/Lumora/window.ini";
        QTest::newRow("by custom") << QByteArray() << QByteArray("/h") << "/h/.local/state/Lumora/window.ini";
        QTest::newRow("relative") << QByteArray("s") << QByteArray("/h") << "/h/.local/state/Lumora/window.ini";
        QTest::newRow("none") << QByteArray() << QByteArray() << QString();
    }

    void looksForTheStateDirectory()
    {
        QFETCH(QByteArray, state);
        QFETCH(QByteArray, home);
        QFETCH(QString, expected);
        const QByteArray realHome = qgetenv("HOME");
        qputenv("XDG_STATE_HOME", state);
        qputenv("HOME", home);

        const QString file = windowStateFile().value_or(QString());
        qputenv("HOME", realHome);

        QCOMPARE(file, expected);
    }
};

int main(int argc, char *argv[])
{
    return runWindowTest<WindowMemoryTest>(argc, argv);
}

#include "tst_windowmemory.moc"
