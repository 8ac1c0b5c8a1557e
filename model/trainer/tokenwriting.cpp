// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/tokenwriting.h"

#include <algorithm>

namespace lumora::training {

namespace {

constexpr std::string_view space = "\u0120";
constexpr std::string_view newLine = "\u010A";

bool isCapital(char letter)
{
    return letter >= 'A' && letter <= 'Z';
}

} // namespace

bool TokenWriting::endsLine() const
{
    return m_text.ends_with(newLine) || m_text.starts_with("<|");
}

bool TokenWriting::endsClause() const
{
    return !endsLine() && m_text.find_first_of(".!?") != std::string_view::npos;
}

bool TokenWriting::hasSpace() const
{
    return m_text.starts_with(space);
}

bool TokenWriting::isSpace() const
{
    return m_text == space;
}

bool TokenWriting::hasCapital() const
{
    return !word().empty() && isCapital(word().front());
}

std::string TokenWriting::stem() const
{
    std::string small(word());
    std::ranges::transform(small, small.begin(), [](char letter) {
        return isCapital(letter) ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return small;
}

std::string_view TokenWriting::word() const
{
    return hasSpace() && !isSpace() ? m_text.substr(space.size()) : m_text;
}

} // namespace lumora::training
