// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/desktopsettings.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds patience = 150ms;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");

using Settings = QMap<QString, QVariantMap>; // by namespace and key

// Three numbers from 0 to 1; a portal that knows of no accent colour gives others.
QColor colorOf(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return {};
    double red = -1;
    double green = -1;
    double blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto isShare = [](double number) { return number >= 0 && number <= 1; };
    return isShare(red) && isShare(green) && isShare(blue) ? QColor::fromRgbF(float(red), float(green), float(blue))
                                                           : QColor();
}

qreal textScaleOf(const QVariant &value)
{
    constexpr qreal smallest = 0.5; // what a window can follow
    constexpr qreal largest = 2;
    const qreal scale = value.toReal();
    return scale > 0 && std::isfinite(scale) ? std::clamp(scale, smallest, largest) : 1;
}

} // namespace

// A connection of its own: on the shared one, in one of five runs no change was told.
DesktopSettings::DesktopSettings(QObject *parent)
    : DesktopSettings(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop settings")),
                      parent)
{
}

DesktopSettings::DesktopSettings(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
{
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // or else the slot is not found
    if (!QDBusConnection(bus).connect(service, objectPath, interface, QStringLiteral("SettingChanged"), this,
                                      SLOT(take(QString, QString, QDBusVariant))))
        qWarning("Changes of the desktop's settings will not be seen.");
    ask(bus);
}

void DesktopSettings::ask(const QDBusConnection &bus)
{
    QDBusMessage question = QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("ReadAll"));
    question.setArguments({QStringList{appearance, gnome}});
    const QDBusMessage answer = bus.call(question, QDBus::Block, int(patience.count()));
    if (answer.type() == QDBusMessage::ReplyMessage) {
        takeAll(answer);
        return;
    }
    if (QDBusError(answer).type() != QDBusError::NoReply)
        return; // there is no portal
    auto *late = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(late, &QDBusPendingCallWatcher::finished, this, [this, late] {
        takeAll(late->reply());
        late->deleteLater();
    });
}

void DesktopSettings::takeAll(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("a{sa{sv}}"))
        return;
    const auto settings = qdbus_cast<Settings>(answer.arguments().constFirst());
    for (auto space = settings.cbegin(); space != settings.cend(); ++space) {
        for (auto each = space->cbegin(); each != space->cend(); ++each)
            set(space.key(), each.key(), each.value());
    }
    Q_EMIT changed();
}

void DesktopSettings::take(const QString &space, const QString &key, const QDBusVariant &value)
{
    set(space, key, value.variant());
    Q_EMIT changed();
}

void DesktopSettings::set(const QString &space, const QString &key, const QVariant &value)
{
    if (space == appearance && key == QLatin1String("color-scheme"))
        m_colorScheme = ColorScheme(value.toUInt());
    else if (space == appearance && key == QLatin1String("accent-color"))
        m_accent = colorOf(value);
    else if (space == appearance && key == QLatin1String("contrast"))
        m_wantsHighContrast = value.toUInt() == 1;
    else if (space == appearance && key == QLatin1String("reduced-motion"))
        m_wantsReducedMotion = value.toUInt() == 1;
    else if (space == gnome && key == QLatin1String("enable-animations"))
        m_wantsReducedMotion = !value.toBool();
    else if (space == gnome && key == QLatin1String("text-scaling-factor"))
        m_textScale = textScaleOf(value);
}

} // namespace lumora
