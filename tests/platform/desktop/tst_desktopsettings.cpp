// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/desktopsettings.h"

#include <QDBusMetaType>
#include <QProcess>
#include <QTest>
#include <QThread>

using namespace lumora;

namespace {

using Settings = QMap<QString, QVariantMap>;

struct Rgb
{
    double red;
    double green;
    double blue;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Rgb &rgb)
{
    argument.beginStructure();
    argument << rgb.red << rgb.green << rgb.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Rgb &rgb)
{
    argument.beginStructure();
    argument >> rgb.red >> rgb.green >> rgb.blue;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(Rgb)

/// The desktop's side of the portal.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using QObject::QObject;

    Settings settings;

public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList &) { return settings; }
};

class DesktopSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Settings>();
        qDBusRegisterMetaType<Rgb>();
        m_daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QVERIFY2(m_daemon.waitForReadyRead(), "dbus-daemon does not start");
        m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
    }
    void cleanupTestCase()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    void cleanup()
    {
        m_thread.quit();
        m_thread.wait();
        delete m_portal;
        m_portal = nullptr;
        QDBusConnection::disconnectFromBus("portal");
    }

    void readsWhatThePortalSays_data()
    {
        QTest::addColumn<QVariantMap>("appearance");
        QTest::addColumn<QVariantMap>("interface");
        QTest::addColumn<QString>("expected");

        const QVariantMap none;
        const auto colour = [](double red) {
            return QVariantMap{{"accent-color", QVariant::fromValue(Rgb{red, 0, 1})}};
        };
        QTest::newRow("nothing") << none << none << "";
        QTest::newRow("dark") << QVariantMap{{"color-scheme", 1U}} << none << "dark";
        QTest::newRow("light") << QVariantMap{{"color-scheme", 2U}} << none << "light";
        QTest::newRow("no preference") << QVariantMap{{"color-scheme", 0U}} << none << "";
        QTest::newRow("a scheme of another time") << QVariantMap{{"color-scheme", 7U}} << none << "";
        QTest::newRow("accent") << colour(0.5) << none << "accent #8000ff";
        QTest::newRow("no accent is set") << colour(-1) << none << "";
        QTest::newRow("an accent of another type") << QVariantMap{{"accent-color", "blue"}} << none << "";
        QTest::newRow("contrast") << QVariantMap{{"contrast", 1U}} << none << "contrast";
        QTest::newRow("still") << QVariantMap{{"reduced-motion", 1U}} << none << "still";
        QTest::newRow("still on an older desktop") << none << QVariantMap{{"enable-animations", false}} << "still";
        const auto interface = [](const char *key, const QVariant &value) { return QVariantMap{{key, value}}; };
        QTest::newRow("large texts") << none << interface("text-scaling-factor", 1.5) << "texts 1.5";
        QTest::newRow("texts larger than any window") << none << interface("text-scaling-factor", 1e9) << "texts 2";
        QTest::newRow("texts of no size") << none << interface("text-scaling-factor", 0) << "";
    }

    void readsWhatThePortalSays()
    {
        QFETCH(QVariantMap, appearance);
        QFETCH(QVariantMap, interface);
        QFETCH(QString, expected);
        startPortal({{"org.freedesktop.appearance", appearance}, {"org.gnome.desktop.interface", interface}});

        const DesktopSettings settings;

        QCOMPARE(inWords(settings), expected);
    }

    void followsChanges()
    {
        startPortal({});
        const DesktopSettings settings;
        // Sent again until it is seen: the bus tells who the portal is in its own time.
        QTRY_COMPARE((changeScheme(1), inWords(settings)), "dark");
        QTRY_COMPARE((changeScheme(2), inWords(settings)), "light");
    }

    void takesALateAnswer()
    {
        startPortal({{"org.freedesktop.appearance", {{"color-scheme", 1U}}}}, Answers::late);
        const DesktopSettings settings;
        QCOMPARE(inWords(settings), "");

        m_thread.start();
        QTRY_COMPARE(inWords(settings), "dark");
    }

    void doesWithoutPortalOrBus()
    {
        QCOMPARE(inWords(DesktopSettings()), "");
        QCOMPARE(inWords(DesktopSettings(QDBusConnection("there is none"), nullptr)), "");
    }

private:
    enum class Answers {
        atOnce,
        late, ///< once its thread is started
    };

    void startPortal(const Settings &settings, Answers answers = Answers::atOnce)
    {
        QDBusConnection bus = QDBusConnection::connectToBus(m_address, "portal");
        m_portal = new FakePortal;
        m_portal->settings = settings;
        QVERIFY(bus.registerObject("/org/freedesktop/portal/desktop", m_portal, QDBusConnection::ExportAllSlots));
        m_portal->moveToThread(&m_thread);
        QVERIFY(bus.registerService("org.freedesktop.portal.Desktop"));
        if (answers == Answers::atOnce)
            m_thread.start();
    }

    static void changeScheme(uint scheme)
    {
        QDBusMessage change = QDBusMessage::createSignal("/org/freedesktop/portal/desktop",
                                                         "org.freedesktop.portal.Settings", "SettingChanged");
        change << "org.freedesktop.appearance"
               << "color-scheme" << QVariant::fromValue(QDBusVariant(scheme));
        QVERIFY(QDBusConnection("portal").send(change));
    }

    static QString inWords(const DesktopSettings &settings)
    {
        QStringList words;
        words << (settings.prefersDark() ? "dark" : "") << (settings.prefersLight() ? "light" : "")
              << (settings.hasAccent() ? "accent " + settings.accent().name() : "")
              << (settings.wantsHighContrast() ? "contrast" : "") << (settings.wantsReducedMotion() ? "still" : "")
              << (settings.textScale() != 1 ? "texts " + QString::number(settings.textScale()) : "");
        words.removeAll("");
        return words.join(u' ');
    }

    QProcess m_daemon;
    QString m_address;
    QThread m_thread;
    FakePortal *m_portal = nullptr;
};

QTEST_GUILESS_MAIN(DesktopSettingsTest)
#include "tst_desktopsettings.moc"
