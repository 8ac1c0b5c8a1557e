// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <string_view>

namespace lumora::service {

struct ToolCall
{
    std::string name;
    std::string arguments; ///< a JSON object
};

/// A complete object is a call: its first member is "tool".
bool isToolCall(std::string_view json);

/// Throws Failure where the text is not {"tool": NAME, "arguments": {…}}, which its grammar rules out.
ToolCall parseToolCall(std::string_view json);

} // namespace lumora::service
