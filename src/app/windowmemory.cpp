// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/windowmemory.h"

#include <QDir>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QSettings>

#include <array>
#include <chrono>

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds pause = 500ms;

// Properties of the window, and names in the file.
constexpr std::array sizes = {"width", "height", "sidebarWidth"};

constexpr int largestSize = 16384; // a file may say anything

} // namespace

std::optional<QString> windowStateFile()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isRelativePath(folder)) { // so is an empty one; others do not count
        const QString home = qEnvironmentVariable("HOME");
        if (home.isEmpty())
            return std::nullopt;
        folder = home + QStringLiteral("/.local/state");
    }
    return folder + QStringLiteral("/Lumora/window.ini");
}

WindowMemory::WindowMemory(QString file, QObject *parent)
    : QObject(parent)
    , m_file(std::move(file))
    , m_pause(this)
{
    const QSettings settings(m_file, QSettings::IniFormat);
    for (const char *name : sizes) {
        const int size = settings.value(QLatin1String(name)).toInt();
        if (size > 0 && size <= largestSize)
            m_sizes.insert(QLatin1String(name), size);
    }
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    connect(&m_pause, &QTimer::timeout, this, &WindowMemory::write);
}

WindowMemory::~WindowMemory()
{
    if (m_pause.isActive())
        write();
}

QVariantMap WindowMemory::remembered() const
{
    return m_sizes;
}

void WindowMemory::watch(QQuickWindow *window)
{
    m_window = window;
    const QMetaMethod changed = metaObject()->method(metaObject()->indexOfSlot("takeChange()"));
    for (const char *name : sizes) {
        const QMetaObject *type = window->metaObject();
        connect(window, type->property(type->indexOfProperty(name)).notifySignal(), this, changed);
    }
}

void WindowMemory::takeChange()
{
    if (!m_window || m_window->visibility() != QWindow::Windowed)
        return;
    for (const char *name : sizes)
        m_sizes.insert(QLatin1String(name), qRound(m_window->property(name).toReal()));
    m_pause.start();
}

void WindowMemory::write() const
{
    QDir().mkpath(QFileInfo(m_file).path());
    QSettings settings(m_file, QSettings::IniFormat);
    for (auto size = m_sizes.cbegin(); size != m_sizes.cend(); ++size)
        settings.setValue(size.key(), size.value());
}

} // namespace lumora
