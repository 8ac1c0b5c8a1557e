// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/linewatcher.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace lumora::service {

namespace {

constexpr std::size_t longestHeld = 80; // more than a model means by laying a call out

enum class Match {
    no,
    begun,
    complete,
};

void skip(std::string_view &text, std::string_view characters)
{
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

/// Takes the literal from the start of the text; begun: the text ended first.
Match take(std::string_view &text, std::string_view literal)
{
    const std::size_t length = std::min(text.size(), literal.size());
    if (text.substr(0, length) != literal.substr(0, length))
        return Match::no;
    text.remove_prefix(length);
    return length == literal.size() ? Match::complete : Match::begun;
}

Match matchCall(std::string_view line)
{
    for (const std::string_view part : {"{", "\"tool\"", ":"}) {
        skip(line, " \t\r\n");
        if (const Match match = take(line, part); match != Match::complete)
            return match;
    }
    return Match::complete;
}

} // namespace

LineWatcher::Found LineWatcher::read(char byte, std::string &text)
{
    if (!m_atLineStart) {
        text += byte;
        m_atLineStart = byte == '\n';
        return Found::nothing;
    }
    m_held += byte;
    std::string_view line = m_held;
    skip(line, " \t");
    const Match call = m_watch.calls ? matchCall(line) : Match::no;
    const Match userTurn = m_watch.userTurn ? take(line, userLabel) : Match::no;
    if (call == Match::complete || userTurn == Match::complete) {
        m_held.clear();
        return call == Match::complete ? Found::call : Found::userTurn;
    }
    if ((call == Match::no && userTurn == Match::no) || m_held.size() > longestHeld)
        release(text);
    return Found::nothing;
}

// A line break inside what was held begins a line of its own, which is watched anew.
void LineWatcher::release(std::string &text)
{
    const std::string held = std::exchange(m_held, {});
    const std::size_t lineEnd = held.find('\n');
    if (lineEnd == std::string::npos) {
        text += held;
        m_atLineStart = false;
        return;
    }
    text.append(held, 0, lineEnd + 1);
    for (const char byte : std::string_view(held).substr(lineEnd + 1))
        read(byte, text);
}

void LineWatcher::finish(std::string &text)
{
    text += std::exchange(m_held, {});
}

} // namespace lumora::service
