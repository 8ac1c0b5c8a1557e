// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace lumora::service {

/// Whether the whole text is one of the grammar's. Understands as much of GBNF as the service writes: literals,
/// classes, groups, alternatives and the repetitions ? * {n} {m,n}. Throws std::runtime_error where the grammar is
/// none.
bool grammarTakes(const std::string &grammar, const std::string &text);

} // namespace lumora::service
