// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/jsondocument.h"

#include "platform/files/identifier.h"

#include <rapidjson/document.h>

namespace lumora {

namespace {

// Full precision: a double is read back as the one that was written. Iterative: no depth of nesting can use up the
// stack.
constexpr unsigned parseFlags =
    rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;

void require(bool condition)
{
    if (!condition)
        throw JsonError();
}

} // namespace

JsonValue JsonValue::member(const char *key) const
{
    require(m_value->IsObject());
    const auto found = m_value->FindMember(key);
    require(found != m_value->MemberEnd());
    return JsonValue(found->value);
}

std::optional<JsonValue> JsonValue::optionalMember(const char *key) const
{
    require(m_value->IsObject());
    const auto found = m_value->FindMember(key);
    if (found == m_value->MemberEnd() || found->value.IsNull())
        return std::nullopt;
    return JsonValue(found->value);
}

qsizetype JsonValue::size() const
{
    require(m_value->IsArray());
    return m_value->Size();
}

JsonValue JsonValue::at(qsizetype index) const
{
    return JsonValue((*m_value)[rapidjson::SizeType(index)]);
}

QString JsonValue::text() const
{
    require(m_value->IsString());
    return QString::fromUtf8(m_value->GetString(), m_value->GetStringLength());
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
    require(m_value->IsNumber());
    return m_value->GetDouble();
}

qint64 JsonValue::integer() const
{
    require(m_value->IsInt64());
    return m_value->GetInt64();
}

QUuid JsonValue::identifier() const
{
    require(m_value->IsString());
    const std::optional<QUuid> id = identifierFromText(QLatin1String(m_value->GetString(), m_value->GetStringLength()));
    require(id.has_value());
    return *id;
}

JsonDocument::JsonDocument(QByteArray bytes)
    : m_bytes(std::move(bytes))
    , m_document(std::make_unique<rapidjson::Document>())
{
    // The parser takes a zero byte for the end of the text, and leaves the encoding of unescaped text to its caller.
    require(!m_bytes.contains('\0') && QUtf8StringView(m_bytes).isValidUtf8());
    m_document->ParseInsitu<parseFlags>(m_bytes.data());
    require(!m_document->HasParseError());
}

JsonDocument::~JsonDocument() = default;

JsonValue JsonDocument::root() const
{
    return JsonValue(*m_document);
}

} // namespace lumora
