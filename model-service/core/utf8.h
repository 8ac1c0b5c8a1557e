// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumora::service {

/// What stands for a character that cannot be told, U+FFFD.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// Makes valid UTF-8 of bytes that come in any pieces: a character is given on when its last byte has come, and each
/// maximal part of a character that turns out to be broken becomes one U+FFFD.
class Utf8Reader
{
public:
    /// Appends the characters that this byte completes.
    void read(char byte, std::string &text);

    /// The bytes have ended: a character that is still incomplete becomes U+FFFD.
    void finish(std::string &text);

private:
    void start(unsigned char byte, std::string &text);

    std::string m_pending;
    std::size_t m_missing = 0;     // bytes that the character in m_pending still needs
    unsigned char m_lowest = 0x80; // bounds of the next byte
    unsigned char m_highest = 0xBF;
};

std::string validUtf8(std::string_view bytes);

/// At most this many characters from the start, as valid UTF-8.
std::string firstCharacters(std::string_view bytes, std::size_t count);

/// The longest part from the start that has at most this many bytes and ends between two characters.
std::string_view prefixOfCharacters(std::string_view text, std::size_t bytes);

} // namespace lumora::service
