// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace lumora::service {

/// Leaves out what stands between <think> and </think>, the marks themselves, and the white space after the closing
/// one. A mark may come in any pieces; what could still become one is held back.
class ThoughtFilter
{
public:
    enum class Start {
        outside,
        inside, ///< the prompt itself has opened a thought
    };

    explicit ThoughtFilter(Start start)
        : m_state(start == Start::inside ? State::inside : State::outside)
    {
    }

    /// Appends what is known not to be part of a thought.
    void read(char byte, std::string &text);

    /// Appends what was held back, if it stands outside a thought.
    void finish(std::string &text);

private:
    enum class State {
        outside,
        inside,
        after, // in the white space behind a thought
    };

    void take(char byte, std::string &text);

    State m_state;
    std::string m_held; // the beginning of a mark
};

} // namespace lumora::service
