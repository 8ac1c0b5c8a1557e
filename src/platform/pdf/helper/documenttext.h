// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace lumora::pdf {

/// Gives the text of a PDF file's pages in their order, as UTF-8, with a blank line before all but the first; pages
/// without text are left out. Nothing where the file cannot be opened or is locked. file: outlives the call.
void readText(std::string_view file, const std::function<void(const std::string &)> &take);

} // namespace lumora::pdf
