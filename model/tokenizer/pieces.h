// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string_view>
#include <vector>

namespace lumora::training {

/// Cuts a text into the pieces within which tokens are formed, as libllama's pre-tokenizer "gpt-2" does: words, numbers
/// and runs of signs, each with the space before it, white space, and the endings of English contractions. Together the
/// pieces are the text. text: valid UTF-8.
std::vector<std::string_view> pieces(std::string_view text);

/// The piece begins with a digit of any script, after its space.
bool isNumber(std::string_view piece);

} // namespace lumora::training
