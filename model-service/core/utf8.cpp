// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/utf8.h"

namespace lumora::service {

namespace {

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

void Utf8Reader::read(char byte, std::string &text)
{
    const auto value = static_cast<unsigned char>(byte);
    if (m_missing == 0)
        return start(value, text);
    if (value < m_lowest || value > m_highest) {
        finish(text);
        return start(value, text);
    }
    m_pending += byte;
    m_lowest = 0x80;
    m_highest = 0xBF;
    if (--m_missing == 0) {
        text += m_pending;
        m_pending.clear();
    }
}

void Utf8Reader::finish(std::string &text)
{
    if (m_missing > 0)
        text += replacementCharacter;
    m_missing = 0;
    m_pending.clear();
}

// The bounds of a second byte keep out surrogates, values above U+10FFFF and forms longer than needed.
void Utf8Reader::start(unsigned char byte, std::string &text)
{
    if (byte < 0x80) {
        text += static_cast<char>(byte);
        return;
    }
    if (byte < 0xC2 || byte > 0xF4) {
        text += replacementCharacter;
        return;
    }
    m_pending.assign(1, static_cast<char>(byte));
    m_missing = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    m_lowest = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
    m_highest = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
}

std::string validUtf8(std::string_view bytes)
{
    Utf8Reader reader;
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        reader.read(byte, text);
    reader.finish(text);
    return text;
}

std::string firstCharacters(std::string_view bytes, std::size_t count)
{
    std::string text = validUtf8(bytes);
    std::size_t end = 0;
    for (; end < text.size() && (count > 0 || isContinuation(text[end])); ++end)
        if (!isContinuation(text[end]))
            --count;
    text.resize(end);
    return text;
}

std::string_view prefixOfCharacters(std::string_view text, std::size_t bytes)
{
    if (bytes >= text.size())
        return text;
    while (bytes > 0 && isContinuation(text[bytes]))
        --bytes;
    return text.substr(0, bytes);
}

} // namespace lumora::service
