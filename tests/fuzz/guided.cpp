// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"

#include <cstddef>
#include <cstdint>

// The name that libFuzzer looks for.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    lumora::fuzz::tryInput({reinterpret_cast<const char *>(data), size});
    return 0;
}
