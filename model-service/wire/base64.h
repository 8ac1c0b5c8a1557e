// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumora::wire {

// Base64 (RFC 4648) of bytes whose number is a multiple of three, as that of pixels is: it needs no padding.

/// Characters that as many bytes become.
constexpr std::size_t base64Size(std::size_t bytes)
{
    return bytes / 3 * 4;
}

/// Writes to where there is room for base64Size.
void writeBase64(std::string_view bytes, char *text);

/// Nothing where the text is not such base64.
std::optional<std::string> fromBase64(std::string_view text);

} // namespace lumora::wire
