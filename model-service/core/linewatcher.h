// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace lumora::service {

/// Watches the beginnings of lines for what ends a text: the beginning of a tool call, {"tool": with any blanks and
/// line breaks inside, and, where a prompt is laid out plainly, the label of the user's next turn. Blanks may stand
/// before either. What could still become one of them is held back.
class LineWatcher
{
public:
    enum class Found {
        nothing,
        call,
        userTurn,
    };

    struct Watch
    {
        bool calls = false;
        bool userTurn = false;
    };

    explicit LineWatcher(Watch watch)
        : m_watch(watch)
    {
    }

    /// Appends what is known to be text. Once something is found, nothing more is to be read.
    Found read(char byte, std::string &text);

    /// Appends what was held back.
    void finish(std::string &text);

private:
    void release(std::string &text);

    Watch m_watch;
    bool m_atLineStart = true;
    std::string m_held;
};

/// How a plainly laid out prompt labels what the user says.
constexpr const char *userLabel = "User:";

} // namespace lumora::service
