// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora::service {

// Grammars in GBNF with the start symbol "root". White space between the parts of an object is bounded, so that a model
// cannot fill its context with it; strings hold no lone surrogates, so that what is bound always parses.

/// One object of a JSON Schema: its properties, all of them, in order. Understood are objects, arrays, strings,
/// numbers, integers, booleans, null, and enumerations of strings. Throws Failure where the schema asks for something
/// else.
std::string objectGrammar(std::string_view schema);

/// An object of the schema, or a call of one of the tools: {"tool": NAME, "arguments": {…}}.
std::string objectOrCallGrammar(std::string_view schema, const std::vector<wire::Tool> &tools);

/// What follows {"tool": in a call of one of the tools, which are at least one.
std::string callGrammar(const std::vector<wire::Tool> &tools);

} // namespace lumora::service
