// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/jsonwriter.h"

#include "platform/files/identifier.h"
#include "platform/text/textrules.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace lumora {

struct JsonWriter::Output
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
};

JsonWriter::JsonWriter()
    : m_output(std::make_unique<Output>())
{
}

JsonWriter::~JsonWriter() = default;

void JsonWriter::startObject()
{
    m_output->writer.StartObject();
}

void JsonWriter::endObject()
{
    m_output->writer.EndObject();
}

void JsonWriter::startArray()
{
    m_output->writer.StartArray();
}

void JsonWriter::endArray()
{
    m_output->writer.EndArray();
}

void JsonWriter::key(QByteArrayView key)
{
    m_output->writer.Key(key.data(), rapidjson::SizeType(key.size()));
}

void JsonWriter::text(const QString &text)
{
    utf8Text(wellFormed(text).toUtf8());
}

void JsonWriter::utf8Text(QByteArrayView text)
{
    m_output->writer.String(text.data(), rapidjson::SizeType(text.size()));
}

void JsonWriter::texts(const QStringList &texts)
{
    startArray();
    for (const QString &each : texts)
        text(each);
    endArray();
}

void JsonWriter::number(double number)
{
    m_output->writer.Double(number);
}

void JsonWriter::integer(qint64 integer)
{
    m_output->writer.Int64(integer);
}

void JsonWriter::identifier(const QUuid &id)
{
    utf8Text(identifierText(id).toLatin1());
}

QByteArrayView JsonWriter::bytes() const
{
    return {m_output->buffer.GetString(), qsizetype(m_output->buffer.GetSize())};
}

} // namespace lumora
