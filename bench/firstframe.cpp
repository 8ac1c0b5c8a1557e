// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "firstframe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QQuickWindow>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <cstdio>

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// In kilobytes; name: as /proc has it, with its colon.
long long ownMemory(const char *name)
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').at(1).toLongLong();
    }
    return 0;
}

long long nanoseconds()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class FirstFrame : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = event->type() == QEvent::Show ? qobject_cast<QQuickWindow *>(watched) : nullptr;
        if (window && !m_window) {
            m_window = window;
            connect(window, &QQuickWindow::frameSwapped, this, &FirstFrame::takeFrame);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void takeFrame()
    {
        if (m_first == 0)
            m_first = nanoseconds();
        const QVariant store = m_window->property("store");
        const bool isFilled = !store.isValid() || store.value<QObject *>();
        if (!isFilled || m_isFilled)
            return;
        m_isFilled = true;
        QTimer::singleShot(1s, this, [this, filled = nanoseconds()] {
            std::printf("%lld %lld %lld %lld\n", m_first, filled, ownMemory("Rss:"), ownMemory("Pss:"));
            QCoreApplication::quit();
        });
    }

    QQuickWindow *m_window = nullptr;
    long long m_first = 0;
    bool m_isFilled = false;
};

} // namespace

void reportFirstFrame(QCoreApplication &application)
{
    application.installEventFilter(new FirstFrame(&application));
}

} // namespace lumora
