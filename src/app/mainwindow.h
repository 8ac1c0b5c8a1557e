// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/refusingnetwork.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace lumora {

class ChatStore;

/// The one window of the program.
class MainWindow
{
public:
    /// Shows the window. store must outlive it.
    explicit MainWindow(ChatStore *store);

    /// Null where the views could not be loaded; that is a fault of the build, and has been logged.
    QQuickWindow *window() const;

    /// Brings the window to the front, out of the task bar as well.
    void raise() const;

private:
    RefusingNetwork m_network;
    QQmlApplicationEngine m_engine;
};

} // namespace lumora
