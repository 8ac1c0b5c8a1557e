// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace lumora::service {

/// Leaves out what stands between <think> and </think> at the start of a turn, the marks themselves, and the white
/// space after the closing one. Once anything but white space was said, a mark is what the reply is about, and stays in
/// it. A mark may come in any pieces; what could still become one is held back.
class ThoughtFilter
{
public:
    enum class Start {
        outside,
        inside, ///< the prompt itself has opened a thought
    };

    explicit ThoughtFilter(Start start)
        : m_state(start == Start::inside ? State::inside : State::before)
    {
    }

    /// Appends what is known not to be part of a thought.
    void read(char byte, std::string &text);

    /// Appends what was held back, if it stands outside a thought.
    void finish(std::string &text);

    bool isInside() const { return m_state == State::inside; }

private:
    enum class State {
        before, // nothing but white space has come
        inside,
        after,   // in the white space behind a thought
        outside, // for the rest of the turn
    };

    void take(char byte, std::string &text);

    State m_state;
    std::string m_held; // the beginning of a mark
};

} // namespace lumora::service
