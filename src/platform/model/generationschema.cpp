// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/generationschema.h"

#include "platform/model/jsontext.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace lumora {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeProperty(Writer &writer, const GenerationSchema::Property &property)
{
    const bool isList = property.type == GenerationSchema::Type::listOfText;
    writeJsonString(writer, property.name);
    writer.StartObject();
    writer.Key("type");
    writer.String(isList ? "array" : "string");
    if (isList) {
        writer.Key("items");
        writer.StartObject();
        writer.Key("type");
        writer.String("string");
        writer.EndObject();
    }
    writer.Key("description");
    writeJsonString(writer, property.description);
    writer.EndObject();
}

} // namespace

QByteArray GenerationSchema::toJson() const
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("title");
    writeJsonString(writer, typeName);
    writer.Key("type");
    writer.String("object");
    writer.Key("properties");
    writer.StartObject();
    for (const Property &property : properties)
        writeProperty(writer, property);
    writer.EndObject();
    writer.Key("required");
    writer.StartArray();
    for (const Property &property : properties)
        writeJsonString(writer, property.name);
    writer.EndArray();
    writer.Key("additionalProperties");
    writer.Bool(false);
    writer.EndObject();
    return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

} // namespace lumora
