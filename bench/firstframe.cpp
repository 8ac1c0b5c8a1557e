// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "firstframe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QQuickWindow>
#include <QTimer>

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

class FirstFrame : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = event->type() == QEvent::Show ? qobject_cast<QQuickWindow *>(watched) : nullptr;
        if (window && !m_isFound) {
            m_isFound = true;
            connect(window, &QQuickWindow::frameSwapped, this, &FirstFrame::report, Qt::SingleShotConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void report()
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        QTimer::singleShot(1s, this, [now] {
            std::printf("%lld %lld %lld\n", static_cast<long long>(std::chrono::nanoseconds(now).count()),
                        ownMemory("Rss:"), ownMemory("Pss:"));
            QCoreApplication::quit();
        });
    }

    bool m_isFound = false;
};

} // namespace

void reportFirstFrame(QCoreApplication &application)
{
    application.installEventFilter(new FirstFrame(&application));
}

} // namespace lumora
