// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/base64.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace lumora::wire {

namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t noDigit = 64;

// Images are some million bytes, and the program's window waits for them to be written: two digits at a time.
constexpr std::array<std::array<char, 2>, 4096> pairs = [] {
    std::array<std::array<char, 2>, 4096> made{};
    for (std::size_t value = 0; value < made.size(); ++value)
        made[value] = {digits[value / 64], digits[value % 64]};
    return made;
}();

constexpr std::array<std::uint32_t, 256> digitValues = [] {
    std::array<std::uint32_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t i = 0; i < digits.size(); ++i)
        values[static_cast<unsigned char>(digits[i])] = static_cast<std::uint32_t>(i);
    return values;
}();

std::uint32_t byteAt(const char *bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

std::uint32_t valueAt(const char *text, std::size_t at)
{
    return digitValues[static_cast<unsigned char>(text[at])];
}

} // namespace

void writeBase64(std::string_view bytes, char *text)
{
    const char *const end = bytes.data() + bytes.size() / 3 * 3;
    for (const char *from = bytes.data(); from != end; from += 3, text += 4) {
        const std::uint32_t group = byteAt(from, 0) << 16U | byteAt(from, 1) << 8U | byteAt(from, 2);
        std::memcpy(text, pairs[group >> 12U].data(), 2);
        std::memcpy(text + 2, pairs[group & 4095U].data(), 2);
    }
}

std::optional<std::string> fromBase64(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::string bytes(text.size() / 4 * 3, '\0');
    char *to = bytes.data();
    const char *const end = text.data() + text.size();
    std::uint32_t any = 0;
    for (const char *from = text.data(); from != end; from += 4, to += 3) {
        const std::array<std::uint32_t, 4> values = {valueAt(from, 0), valueAt(from, 1), valueAt(from, 2),
                                                     valueAt(from, 3)};
        const std::uint32_t group = values[0] << 18U | values[1] << 12U | values[2] << 6U | values[3];
        any |= values[0] | values[1] | values[2] | values[3];
        to[0] = static_cast<char>(group >> 16U);
        to[1] = static_cast<char>((group >> 8U) & 255U);
        to[2] = static_cast<char>(group & 255U);
    }
    return (any & noDigit) == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace lumora::wire
