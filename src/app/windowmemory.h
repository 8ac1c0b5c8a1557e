// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <optional>

namespace lumora {

/// The file in the user's state directory in which a window's size is kept; an absolute path, created or not. Absent
/// where the system names no such directory.
std::optional<QString> windowStateFile();

/// Keeps the size of the window and the width of its sidebar from one start to the next. A file that cannot be read or
/// written is passed over.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    explicit WindowMemory(QString file, QObject *parent = nullptr);
    /// Writes what has not been written yet.
    ~WindowMemory() override;
    Q_DISABLE_COPY_MOVE(WindowMemory)

    /// Those of "width", "height" and "sidebarWidth" that are known, in logical pixels: properties of the window.
    QVariantMap remembered() const;

    /// From now on, remembers this window; nothing while it is maximised or fills the screen.
    void watch(QQuickWindow *window);

private Q_SLOTS:
    void takeChange();

private:
    void write() const;

    QString m_file;
    QPointer<QQuickWindow> m_window;
    QVariantMap m_sizes;
    QTimer m_pause; ///< before a change is written, so that a drag is written once
};

} // namespace lumora
