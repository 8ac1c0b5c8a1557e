// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "modelfile/numberformats.h"

#include "modelfile/bytes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace lumora::training {

namespace {

template <typename Number>
Number take(std::string_view &bytes)
{
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    bytes.remove_prefix(sizeof number);
    return number;
}

void appendBlock(std::string &bytes, std::span<const float> block)
{
    constexpr float most = 127;
    float largest = 0;
    for (const float number : block)
        largest = std::max(largest, std::abs(number));
    const float factor = largest / most;
    append(bytes, toHalf(factor));
    for (const float number : block)
        append(bytes, static_cast<std::int8_t>(factor > 0 ? std::round(number / factor) : 0.0F));
}

void takeBlock(std::string_view &bytes, std::vector<float> &numbers)
{
    const float factor = fromHalf(take<std::uint16_t>(bytes));
    for (std::size_t i = 0; i < eightBitBlock; ++i)
        numbers.push_back(factor * static_cast<float>(take<std::int8_t>(bytes)));
}

} // namespace

std::uint16_t toHalf(float number)
{
    const auto bits = std::bit_cast<std::uint32_t>(number);
    const std::uint32_t sign = (bits >> 16U) & 0x8000U;
    const float size = std::abs(number);
    if (!(size < 65520.0F)) // the first that is rounded up to infinity; or no number
        return static_cast<std::uint16_t>(sign | (std::isnan(number) ? 0x7E00U : 0x7C00U));
    // Adding a power of two leaves in the last bits what half precision has, rounded: its step at this size, at least
    // that of the smallest numbers.
    const int exponent = std::max(std::ilogb(size == 0 ? 1e-30F : size), -14);
    const float step = std::ldexp(1.0F, exponent - 10);
    const auto steps = static_cast<std::uint32_t>(std::nearbyint(size / step));
    // 1024 steps are the lowest of this exponent; one step more than the highest is the lowest of the next.
    return static_cast<std::uint16_t>(sign | (static_cast<std::uint32_t>(exponent + 14) * 1024U + steps));
}

float fromHalf(std::uint16_t bits)
{
    const float sign = (bits & 0x8000U) != 0 ? -1.0F : 1.0F;
    const int exponent = (bits >> 10U) & 0x1FU;
    const auto fraction = static_cast<float>(bits & 0x3FFU);
    if (exponent == 0x1F)
        return fraction > 0 ? std::nanf("") : sign * INFINITY;
    return exponent == 0 ? sign * std::ldexp(fraction, -24) : sign * std::ldexp(fraction + 1024, exponent - 25);
}

std::size_t encodedSize(std::size_t count, NumberFormat format)
{
    switch (format) {
    case NumberFormat::single:
        return count * sizeof(float);
    case NumberFormat::half:
        return count * sizeof(std::uint16_t);
    case NumberFormat::eightBits:
        break;
    }
    if (count % eightBitBlock != 0)
        throw std::invalid_argument("numbers of eight bits stand in blocks of 32");
    return count / eightBitBlock * (sizeof(std::uint16_t) + eightBitBlock);
}

std::string encode(std::span<const float> numbers, NumberFormat format)
{
    std::string bytes;
    bytes.reserve(encodedSize(numbers.size(), format));
    switch (format) {
    case NumberFormat::single:
        bytes.append(reinterpret_cast<const char *>(numbers.data()), numbers.size_bytes());
        break;
    case NumberFormat::half:
        for (const float number : numbers)
            append(bytes, toHalf(number));
        break;
    case NumberFormat::eightBits:
        for (std::size_t i = 0; i < numbers.size(); i += eightBitBlock)
            appendBlock(bytes, numbers.subspan(i, eightBitBlock));
        break;
    }
    return bytes;
}

std::vector<float> decode(std::string_view bytes, std::size_t count, NumberFormat format)
{
    if (bytes.size() != encodedSize(count, format))
        throw std::invalid_argument("a tensor has another size than its numbers take");
    std::vector<float> numbers;
    numbers.reserve(count);
    while (numbers.size() < count) {
        if (format == NumberFormat::single)
            numbers.push_back(take<float>(bytes));
        else if (format == NumberFormat::half)
            numbers.push_back(fromHalf(take<std::uint16_t>(bytes)));
        else
            takeBlock(bytes, numbers);
    }
    return numbers;
}

} // namespace lumora::training
