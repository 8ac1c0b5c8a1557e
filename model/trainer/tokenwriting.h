// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <string_view>

namespace lumora::training {

/// How a token is written, which decides where sentences begin and which tokens are nearly the same.
class TokenWriting
{
public:
    /// text: as a vocabulary has it, in printable characters. It must live on.
    explicit TokenWriting(std::string_view text)
        : m_text(text)
    {
    }

    bool endsLine() const; ///< also for the marks of messages
    bool endsClause() const;
    bool hasSpace() const; ///< at its beginning
    bool isSpace() const;  ///< and nothing else
    bool hasCapital() const;

    /// What it has in common with tokens that are written with or without a space or a capital.
    std::string stem() const;

private:
    std::string_view word() const;

    std::string_view m_text;
};

} // namespace lumora::training
