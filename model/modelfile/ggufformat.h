// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Numbers of the GGUF format, version 3, as its description in ggml's documentation gives them.
namespace lumora::training::gguf {

constexpr std::string_view magic = "GGUF";
constexpr std::uint32_t version = 3;
constexpr std::size_t alignment = 32; // bytes

// Types of values.
constexpr std::uint32_t unsigned32 = 4;
constexpr std::uint32_t signed32 = 5;
constexpr std::uint32_t float32 = 6;
constexpr std::uint32_t boolean = 7;
constexpr std::uint32_t text = 8;
constexpr std::uint32_t array = 9;

} // namespace lumora::training::gguf
