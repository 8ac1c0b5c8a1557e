// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string_view>

namespace lumora {

/// The English word that this is a form of, where no rule of endings finds it: "pay" for "paid", "child" for
/// "children". Any other word comes back as it is. Folded words, as UTF-8.
std::string_view regularForm(std::string_view word);

} // namespace lumora
