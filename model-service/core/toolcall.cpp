// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/toolcall.h"

#include "core/failure.h"
#include "wire/json.h"

namespace lumora::service {

bool isToolCall(std::string_view json)
{
    const auto object = wire::parseObject(json);
    return object && object->MemberBegin() != object->MemberEnd() && wire::view(object->MemberBegin()->name) == "tool";
}

ToolCall parseToolCall(std::string_view json)
{
    const auto object = wire::parseObject(json);
    const auto *const name = object ? wire::member(*object, "tool") : nullptr;
    const auto *const arguments = object ? wire::member(*object, "arguments") : nullptr;
    if (name == nullptr || !name->IsString() || arguments == nullptr || !arguments->IsObject())
        throw internalFailure("a tool call does not have its form");
    return {std::string(wire::view(*name)), wire::jsonText(*arguments)};
}

} // namespace lumora::service
