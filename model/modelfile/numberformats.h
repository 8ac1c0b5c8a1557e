// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// How the numbers of a tensor stand in a file, with GGUF's numbers for it.
enum class NumberFormat : std::uint32_t {
    single = 0,    ///< F32
    half = 1,      ///< F16
    eightBits = 8, ///< Q8_0: blocks of 32 whole numbers of eight bits, with one factor in half precision
};

constexpr std::size_t eightBitBlock = 32; // numbers

/// Rounded to the nearest, to even at a tie; too large ones become infinite.
std::uint16_t toHalf(float number);
float fromHalf(std::uint16_t bits);

/// The bytes of the numbers in a file, little-endian. Throws std::invalid_argument where a block is not full.
std::string encode(std::span<const float> numbers, NumberFormat format);

/// The reverse. bytes: as many as the count takes. Throws std::invalid_argument.
std::vector<float> decode(std::string_view bytes, std::size_t count, NumberFormat format);

/// Bytes of so many numbers. Throws std::invalid_argument where a block is not full.
std::size_t encodedSize(std::size_t count, NumberFormat format);

} // namespace lumora::training
