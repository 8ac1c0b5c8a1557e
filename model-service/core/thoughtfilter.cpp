// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/thoughtfilter.h"

#include <string_view>

namespace lumora::service {

namespace {

constexpr std::string_view openingMark = "<think>";
constexpr std::string_view closingMark = "</think>";
constexpr std::string_view whiteSpace = " \t\r\n";

} // namespace

void ThoughtFilter::read(char byte, std::string &text)
{
    if (m_state == State::outside) {
        text += byte;
        return;
    }
    const std::string_view mark = m_state == State::inside ? closingMark : openingMark;
    m_held += byte;
    if (m_held == mark) {
        m_state = m_state == State::inside ? State::after : State::inside;
        m_held.clear();
        return;
    }
    if (mark.starts_with(m_held))
        return;
    // The first byte of a mark occurs nowhere else in it, so only the byte that broke the match can begin another.
    m_held.pop_back();
    finish(text);
    if (byte == mark.front() && m_state != State::outside)
        m_held = byte;
    else
        take(byte, text);
}

void ThoughtFilter::finish(std::string &text)
{
    for (const char passed : m_held)
        take(passed, text);
    m_held.clear();
}

void ThoughtFilter::take(char byte, std::string &text)
{
    const bool isWhiteSpace = whiteSpace.find(byte) != std::string_view::npos;
    if (m_state == State::inside || (m_state == State::after && isWhiteSpace))
        return;
    if (!isWhiteSpace)
        m_state = State::outside;
    text += byte;
}

} // namespace lumora::service
