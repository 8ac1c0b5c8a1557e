// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/refusingnetwork.h"

#include <QQmlApplicationEngine>

namespace lumora {

class ChatStore;

/// The one window of the program.
class MainWindow
{
public:
    /// Shows the window. store must outlive it.
    explicit MainWindow(ChatStore *store);

    /// Whether there is a window. A false is a fault of the build, and has been logged.
    bool isShown() const;

    /// Brings the window to the front, out of the task bar as well.
    void raise();

private:
    RefusingNetwork m_network;
    QQmlApplicationEngine m_engine;
};

} // namespace lumora
