// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tokenizer/bytetext.h"

#include <array>

namespace lumora::training {

namespace {

bool standsForItself(unsigned byte)
{
    return (byte >= 0x21 && byte <= 0x7E) || (byte >= 0xA1 && byte <= 0xAC) || byte >= 0xAE;
}

/// Of a character below U+0800.
std::string utf8(unsigned character)
{
    if (character < 0x80)
        return {static_cast<char>(character)};
    return {static_cast<char>(0xC0U | (character >> 6U)), static_cast<char>(0x80U | (character & 0x3FU))};
}

std::array<std::string, 256> makeTable()
{
    std::array<std::string, 256> table;
    unsigned next = 0x100;
    for (unsigned byte = 0; byte < table.size(); ++byte)
        table[byte] = utf8(standsForItself(byte) ? byte : next++);
    return table;
}

} // namespace

const std::string &printable(unsigned char byte)
{
    static const std::array<std::string, 256> table = makeTable();
    return table.at(byte);
}

std::string printable(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes)
        text += printable(static_cast<unsigned char>(byte));
    return text;
}

} // namespace lumora::training
