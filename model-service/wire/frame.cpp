// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/frame.h"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace lumora::wire {

namespace {

constexpr std::size_t lengthSize = 4;

std::array<char, lengthSize> littleEndian(std::uint32_t value)
{
    std::array<char, lengthSize> bytes{};
    for (std::size_t i = 0; i < lengthSize; ++i)
        bytes.at(i) = static_cast<char>((value >> (8 * i)) & 0xFFU);
    return bytes;
}

std::uint32_t fromLittleEndian(std::string_view bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < lengthSize; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return value;
}

bool isAllowed(std::size_t length)
{
    return length > 0 && length <= maximumBodySize;
}

} // namespace

std::string frame(std::string_view body)
{
    if (!isAllowed(body.size()))
        throw std::length_error("a frame's body must have 1 byte to 64 MiB");
    const auto length = littleEndian(static_cast<std::uint32_t>(body.size()));
    std::string bytes;
    bytes.reserve(lengthSize + body.size());
    bytes.append(length.data(), length.size());
    bytes.append(body);
    return bytes;
}

void FrameReader::append(std::string_view bytes)
{
    if (m_broken)
        return;
    m_buffer.erase(0, m_start);
    m_start = 0;
    m_buffer.append(bytes);
}

std::optional<std::string> FrameReader::next()
{
    const std::string_view unread = std::string_view(m_buffer).substr(m_start);
    if (m_broken || unread.size() < lengthSize)
        return std::nullopt;
    const std::size_t length = fromLittleEndian(unread);
    if (!isAllowed(length)) {
        m_broken = true;
        return std::nullopt;
    }
    if (unread.size() < lengthSize + length)
        return std::nullopt;
    m_start += lengthSize + length;
    return std::string(unread.substr(lengthSize, length));
}

} // namespace lumora::wire
