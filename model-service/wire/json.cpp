// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/json.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <charconv>
#include <cstdint>

namespace lumora::wire {

namespace {

constexpr int deepest = 64;
constexpr unsigned parseFlags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;

/// Hands events on and ends the parse where they nest too deep, so that no text can exhaust the stack. Reads numbers
/// exactly, and ends the parse at one that no double can hold; the parser's own way to do so relies on what is not
/// defined for a zero with an exponent.
template <typename Handler>
class DepthGuard
{
public:
    explicit DepthGuard(Handler &handler)
        : m_handler(handler)
    {
    }

    bool Null() { return m_handler.Null(); }
    bool Bool(bool value) { return m_handler.Bool(value); }
    bool Int(int value) { return m_handler.Int(value); }
    bool Uint(unsigned value) { return m_handler.Uint(value); }
    bool Int64(std::int64_t value) { return m_handler.Int64(value); }
    bool Uint64(std::uint64_t value) { return m_handler.Uint64(value); }
    bool Double(double value) { return m_handler.Double(value); }
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        std::int64_t integer = 0;
        if (isAll(text, length, integer))
            return m_handler.Int64(integer);
        double number = 0;
        return isAll(text, length, number) && m_handler.Double(number);
    }
    bool String(const char *text, rapidjson::SizeType length, bool copy)
    {
        return m_handler.String(text, length, copy);
    }
    bool Key(const char *text, rapidjson::SizeType length, bool copy) { return m_handler.Key(text, length, copy); }
    bool StartObject() { return ++m_depth <= deepest && m_handler.StartObject(); }
    bool EndObject(rapidjson::SizeType count) { return --m_depth >= 0 && m_handler.EndObject(count); }
    bool StartArray() { return ++m_depth <= deepest && m_handler.StartArray(); }
    bool EndArray(rapidjson::SizeType count) { return --m_depth >= 0 && m_handler.EndArray(count); }

private:
    template <typename Number>
    static bool isAll(const char *text, rapidjson::SizeType length, Number &number)
    {
        const auto [end, error] = std::from_chars(text, text + length, number);
        return error == std::errc() && end == text + length;
    }

    Handler &m_handler;
    int m_depth = 0;
};

} // namespace

std::optional<rapidjson::Document> parseObject(std::string_view json)
{
    // The parser takes a zero byte for the end of its input.
    if (json.find('\0') != std::string_view::npos)
        return std::nullopt;
    rapidjson::Document document;
    bool complete = false;
    const auto generate = [&](rapidjson::Document &handler) {
        rapidjson::MemoryStream stream(json.data(), json.size());
        DepthGuard guard(handler);
        complete = !rapidjson::Reader().Parse<parseFlags>(stream, guard).IsError();
        return complete;
    };
    document.Populate(generate);
    if (!complete || !document.IsObject())
        return std::nullopt;
    return document;
}

std::string jsonText(const rapidjson::Value &value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

const rapidjson::Value *member(const rapidjson::Value &object, std::string_view name)
{
    const auto found = object.FindMember(
        rapidjson::Value(rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size()))));
    return found == object.MemberEnd() ? nullptr : &found->value;
}

} // namespace lumora::wire
