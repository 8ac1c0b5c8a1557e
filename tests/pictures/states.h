// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/storefixture.h"

#include <functional>
#include <vector>

namespace lumora {

/// One state of the window, and the way there.
struct WindowState
{
    QString name;
    /// Before the start: the files, and what the model will say.
    std::function<void(StoreFixture &)> prepare;
    /// In the window.
    std::function<void(ChatStore &)> act = [](ChatStore &) {};
    /// Whether the state has come.
    std::function<bool(const ChatStore &)> hasCome = [](const ChatStore &) { return true; };
};

std::vector<WindowState> windowStates();

} // namespace lumora
