// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/mainwindow.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

namespace lumora {

/// The program's window with hands on its mouse and keyboard. What is on the screen is found as a screen reader finds
/// it: by name and role.
class WindowDriver
{
public:
    explicit WindowDriver(ChatStore *store);

    QQuickWindow *window() const { return m_window.window(); }

    /// The first visible one; null where there is none.
    QQuickItem *find(QAccessible::Role role, const QString &name) const;
    bool shows(QAccessible::Role role, const QString &name) const { return find(role, name) != nullptr; }
    /// Whether this text is to be seen somewhere, whatever it is part of.
    bool showsText(const QString &text) const;
    /// Name of what has the keyboard.
    QString focusName() const;

    void click(const QQuickItem *item, Qt::MouseButton button = Qt::LeftButton) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    void type(const QString &text) const;

private:
    QAccessibleInterface *tree() const;

    MainWindow m_window;
};

} // namespace lumora
