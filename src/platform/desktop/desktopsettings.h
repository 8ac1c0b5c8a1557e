// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QColor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>

namespace lumora {

/// How the user wants programs to look, as the desktop's settings portal says it (org.freedesktop.portal.Settings),
/// also when it changes. Where there is no portal, or it leaves a value out, that value says so. Used on the main
/// thread.
class DesktopSettings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool prefersDark READ prefersDark NOTIFY changed)
    Q_PROPERTY(bool prefersLight READ prefersLight NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(bool hasAccent READ hasAccent NOTIFY changed)
    Q_PROPERTY(bool wantsHighContrast READ wantsHighContrast NOTIFY changed)
    Q_PROPERTY(bool wantsReducedMotion READ wantsReducedMotion NOTIFY changed)
    Q_PROPERTY(qreal textScale READ textScale NOTIFY changed)

public:
    /// Asks on the user's session bus, and waits for a moment: a window should not change its colours once it is seen.
    explicit DesktopSettings(QObject *parent = nullptr);
    DesktopSettings(const QDBusConnection &bus, QObject *parent);

    /// Neither where the user has no preference.
    bool prefersDark() const { return m_colorScheme == ColorScheme::dark; }
    bool prefersLight() const { return m_colorScheme == ColorScheme::light; }
    /// Invalid where the desktop names none.
    QColor accent() const { return m_accent; }
    bool hasAccent() const { return m_accent.isValid(); }
    bool wantsHighContrast() const { return m_wantsHighContrast; }
    bool wantsReducedMotion() const { return m_wantsReducedMotion; }
    /// By how much texts are larger than usual, from 0.5 to 2; 1 where the desktop does not say.
    qreal textScale() const { return m_textScale; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void take(const QString &space, const QString &key, const QDBusVariant &value);

private:
    enum class ColorScheme : quint32 { // as the portal numbers them
        noPreference = 0,
        dark = 1,
        light = 2,
    };

    void ask(const QDBusConnection &bus);
    void takeAll(const QDBusMessage &answer);
    void set(const QString &space, const QString &key, const QVariant &value);

    ColorScheme m_colorScheme = ColorScheme::noPreference;
    QColor m_accent;
    bool m_wantsHighContrast = false;
    bool m_wantsReducedMotion = false;
    qreal m_textScale = 1;
};

} // namespace lumora
