// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/jsondocument.h"

#include "platform/files/identifier.h"
#include "platform/files/rapidjson.h"

#include <QStringDecoder>

#include <charconv>
#include <cstdint>

namespace lumora {

namespace {

constexpr qsizetype readAhead = 16; // bytes

// Iterative: no depth of nesting can use up the stack.
constexpr unsigned parseFlags =
    rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;

void require(bool condition)
{
    if (!condition)
        throw JsonError();
}

const rapidjson::Value &parsed(const void *node)
{
    return *static_cast<const rapidjson::Value *>(node);
}

/// Reads numbers such that a double is the one that was written. The parser's own way to do so relies on what is not
/// defined for a zero with an exponent.
class ExactDocument : public rapidjson::Document
{
public:
    /// Whether it is JSON. The text stays in use.
    bool read(char *json)
    {
        bool isWhole = false;
        const auto parse = [json, &isWhole, this](rapidjson::Document &) {
            rapidjson::InsituStringStream stream(json);
            isWhole = !rapidjson::Reader().Parse<parseFlags>(stream, *this).IsError();
            return isWhole;
        };
        Populate(parse);
        return isWhole;
    }

    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        const QByteArrayView number(text, qsizetype(length));
        std::int64_t integer = 0;
        const auto whole = std::from_chars(number.begin(), number.end(), integer);
        if (whole.ec == std::errc() && whole.ptr == number.end())
            return Int64(integer);
        double value = 0;
        const bool isInRange = std::from_chars(number.begin(), number.end(), value).ec == std::errc();
        const bool isSmall = number.lastIndexOf('-') > 0; // by its exponent; out of range, it is next to nothing
        return (isInRange || isSmall) && Double(value);
    }
};

} // namespace

struct JsonDocument::Parsed
{
    ExactDocument document;
};

JsonValue JsonValue::member(const char *key) const
{
    if (const std::optional<JsonValue> value = find(key))
        return *value;
    throw JsonError();
}

std::optional<JsonValue> JsonValue::optionalMember(const char *key) const
{
    const std::optional<JsonValue> value = find(key);
    return value && parsed(value->m_node).IsNull() ? std::nullopt : value;
}

std::optional<JsonValue> JsonValue::find(const char *key) const
{
    const rapidjson::Value &object = parsed(m_node);
    require(object.IsObject());
    const auto found = object.FindMember(key);
    return found == object.MemberEnd() ? std::nullopt : std::optional(JsonValue(&found->value));
}

qsizetype JsonValue::size() const
{
    require(parsed(m_node).IsArray());
    return parsed(m_node).Size();
}

JsonValue JsonValue::at(qsizetype index) const
{
    return JsonValue(&parsed(m_node)[rapidjson::SizeType(index)]);
}

QString JsonValue::text() const
{
    // A byte order mark at the beginning is a character of the text like any other.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(utf8());
    require(!decoder.hasError());
    return text;
}

QByteArrayView JsonValue::utf8() const
{
    const rapidjson::Value &value = parsed(m_node);
    require(value.IsString());
    return {value.GetString(), qsizetype(value.GetStringLength())};
}

QStringList JsonValue::texts() const
{
    QStringList texts;
    const qsizetype count = size();
    texts.reserve(count);
    for (qsizetype i = 0; i < count; ++i)
        texts.append(at(i).text());
    return texts;
}

double JsonValue::number() const
{
    require(parsed(m_node).IsNumber());
    return parsed(m_node).GetDouble();
}

qint64 JsonValue::integer() const
{
    require(parsed(m_node).IsInt64());
    return parsed(m_node).GetInt64();
}

QUuid JsonValue::identifier() const
{
    if (const std::optional<QUuid> id = identifierFromText(QLatin1String(utf8())))
        return *id;
    throw JsonError();
}

JsonDocument::JsonDocument(QByteArray bytes)
    : m_bytes(std::move(bytes))
    , m_parsed(std::make_unique<Parsed>())
{
    // The parser takes a zero byte for the end of the text, and leaves the encoding of unescaped text to its caller,
    // which looks at it once the text is wanted.
    require(!m_bytes.contains('\0'));
    m_bytes.reserve(m_bytes.size() + readAhead);
    require(m_parsed->document.read(m_bytes.data()));
}

JsonDocument::~JsonDocument() = default;

JsonValue JsonDocument::root() const
{
    const rapidjson::Value &root = m_parsed->document;
    return JsonValue(&root);
}

} // namespace lumora
