// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/jsonwriter.h"

#include "platform/files/identifier.h"
#include "platform/files/rapidjson.h"
#include "platform/text/textrules.h"

#include <QStringEncoder>

namespace lumora {

struct JsonWriter::Output
{
    ByteSink sink;
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    QStringEncoder encoder{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    QByteArray encoded; // kept from text to text: a history has very many

    QByteArrayView encode(QStringView text)
    {
        const qsizetype space = encoder.requiredSpace(text.size());
        if (encoded.size() < space)
            encoded.resize(space);
        const char *end = encoder.appendToBuffer(encoded.data(), text);
        return {encoded.constData(), end};
    }
};

JsonWriter::JsonWriter(ByteSink sink)
    : m_output(std::make_unique<Output>())
{
    m_output->sink = std::move(sink);
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
    const QByteArrayView utf8 = m_output->encode(text);
    if (!m_output->encoder.hasError()) {
        utf8Text(utf8);
        return;
    }
    m_output->encoder.resetState();
    utf8Text(m_output->encode(wellFormed(text)));
}

void JsonWriter::utf8Text(QByteArrayView text)
{
    m_output->writer.String(text.data(), rapidjson::SizeType(text.size()));
    drainWhereFull();
}

void JsonWriter::texts(const QStringList &texts)
{
    startArray();
    for (const QString &each : texts)
        text(each);
    endArray();
}

void JsonWriter::array(QByteArrayView json)
{
    m_output->writer.RawValue(json.data(), size_t(json.size()), rapidjson::kArrayType);
    drainWhereFull();
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

void JsonWriter::finish()
{
    m_output->sink({m_output->buffer.GetString(), qsizetype(m_output->buffer.GetSize())});
    m_output->buffer.Clear();
}

void JsonWriter::drainWhereFull()
{
    constexpr size_t pieceSize = 100'000;
    if (m_output->buffer.GetSize() >= pieceSize)
        finish();
}

} // namespace lumora
