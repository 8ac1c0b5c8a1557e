// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <rapidjson/document.h>

#include <optional>
#include <string>
#include <string_view>

namespace lumora::wire {

/// Parses one JSON object: valid UTF-8, exact doubles, nested at most 64 deep, whatever the text tries.
/// Nothing where the text is anything else.
std::optional<rapidjson::Document> parseObject(std::string_view json);

/// The value as compact JSON text.
std::string jsonText(const rapidjson::Value &value);

inline std::string_view view(const rapidjson::Value &string)
{
    return {string.GetString(), string.GetStringLength()};
}

/// The member, or nothing. RapidJSON's own look-up needs a value made from the name.
const rapidjson::Value *member(const rapidjson::Value &object, std::string_view name);

} // namespace lumora::wire
