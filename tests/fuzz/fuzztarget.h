// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace lumora::fuzz {

/// What one target does with any bytes. It ends the process where something that must hold does not.
void tryInput(std::string_view input);

inline void require(bool holds, const char *otherwise)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", otherwise);
    std::abort();
}

} // namespace lumora::fuzz
