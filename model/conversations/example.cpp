// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/example.h"

#include "wire/json.h"

#include <stdexcept>

namespace lumora::training {

namespace {

using rapidjson::Value;

const Value &required(const Value &object, std::string_view name)
{
    const Value *const value = wire::member(object, name);
    if (value == nullptr)
        throw std::runtime_error("an example misses the member " + std::string(name));
    return *value;
}

std::string text(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsString())
        throw std::runtime_error("an example's member " + std::string(name) + " is no text");
    return std::string(wire::view(value));
}

const Value &list(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsArray())
        throw std::runtime_error("an example's member " + std::string(name) + " is no list");
    return value;
}

wire::Respond readRequest(const Value &object)
{
    wire::Respond request;
    request.instructions = text(object, "instructions");
    request.prompt = text(object, "prompt");
    for (const Value &tool : list(object, "tools").GetArray())
        request.tools.push_back({text(tool, "name"), text(tool, "description"), text(tool, "schema")});
    if (!required(object, "schema").IsNull())
        request.schema = text(object, "schema");
    return request;
}

Turn readTurn(const Value &object)
{
    if (text(object, "role") == "tool")
        return {Turn::Role::tool, text(object, "output"), text(object, "name")};
    const bool isUser = text(object, "role") == "user";
    return {isUser ? Turn::Role::user : Turn::Role::model, text(object, "text"), {}};
}

} // namespace

Example readExample(std::string_view json)
{
    const auto object = wire::parseObject(json);
    if (!object)
        throw std::runtime_error("an example is no JSON object: " + std::string(json.substr(0, 80)));
    Example example{text(*object, "task"), readRequest(required(*object, "request")), {}, {}};
    for (const Value &turn : list(*object, "turns").GetArray())
        example.turns.push_back(readTurn(turn));
    if (example.turns.empty() || example.turns.back().role != Turn::Role::model)
        throw std::runtime_error("an example does not end with a turn of the model");
    example.expect = wire::jsonText(required(*object, "expect"));
    return example;
}

} // namespace lumora::training
