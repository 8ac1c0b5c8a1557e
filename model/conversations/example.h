// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora::training {

/// One turn after the request: what the model is to write, what a tool that it called has put out, or, in drills, the
/// user's next prompt.
struct Turn
{
    enum class Role {
        model,
        tool,
        user,
    };

    Role role = Role::model;
    std::string text; ///< the tool's output, where it is the tool's
    std::string tool; ///< the name of the tool that was called

    bool operator==(const Turn &) const = default;
};

/// A conversation as the generator writes it. The last turn is the model's.
struct Example
{
    std::string task;
    wire::Respond request;
    std::vector<Turn> turns;
    std::string expect; ///< how a reply is judged: JSON
};

/// Reads one line of the generator's. Throws std::runtime_error that says what is wrong with it.
Example readExample(std::string_view json);

} // namespace lumora::training
