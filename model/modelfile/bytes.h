// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <bit>
#include <string>

namespace lumora::training {

static_assert(std::endian::native == std::endian::little, "numbers are copied as they stand in memory");

/// The number as it stands in memory, which is as it stands in a file.
template <typename Number>
void append(std::string &bytes, Number number)
{
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

} // namespace lumora::training
