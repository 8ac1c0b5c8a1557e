// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/refusingnetwork.h"
#include "app/windowmemory.h"

#include <QQmlApplicationEngine>

#include <optional>

class QQuickWindow;

namespace lumora {

class ChatStore;

/// The one window of the program.
class MainWindow
{
public:
    /// Shows the window. store must outlive it. stateFile: where its size is kept; none: it is not.
    explicit MainWindow(ChatStore *store, const std::optional<QString> &stateFile = {});

    /// Null where the views could not be loaded; that is a fault of the build, and has been logged.
    QQuickWindow *window() const;

    /// Brings the window to the front, out of the task bar as well.
    void raise() const;

private:
    RefusingNetwork m_network;
    std::optional<WindowMemory> m_memory;
    QQmlApplicationEngine m_engine;
};

} // namespace lumora
