// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/refusingnetwork.h"
#include "app/windowmemory.h"

#include <QQmlApplicationEngine>

#include <functional>
#include <optional>

class QQuickWindow;

namespace lumora {

class ChatStore;

/// The one window of the program.
class MainWindow
{
public:
    /// Shows the window, empty as yet. stateFile: where its size is kept; none: it is not.
    explicit MainWindow(const std::optional<QString> &stateFile = {});

    /// Fills it, once. The store must outlive it. False where the views could not be loaded; that is a fault of the
    /// installation, and has been logged.
    bool setStore(ChatStore *store) const;

    /// Calls action as soon as the window is on the screen; after a moment also where nobody sees it.
    void whenShown(const std::function<void()> &action) const;

    /// Null where it could not be loaded; that is a fault of the installation, and has been logged.
    QQuickWindow *window() const;

    /// Brings the window to the front, out of the task bar as well. token: what the desktop gave to whoever asks, as
    /// its leave (XDG activation); may be empty.
    void raise(const QString &token = {}) const;

    /// Goes to a new chat; as soon as the window is filled, where it is not.
    void startNewChat() const;

private:
    RefusingNetwork m_network;
    std::optional<WindowMemory> m_memory;
    QQmlApplicationEngine m_engine;
};

} // namespace lumora
