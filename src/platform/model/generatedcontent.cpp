// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/generatedcontent.h"

#include "platform/model/errors.h"
#include "platform/model/jsontext.h"

#include <QCoreApplication>
#include <QStringList>

#include <rapidjson/document.h>

#include <algorithm>

namespace lumora {

namespace {

// Deeper than any schema asks for; keeps a hostile value from using up the stack.
constexpr int deepestNesting = 64;

QString toText(const rapidjson::Value &value)
{
    return QString::fromUtf8(value.GetString(), static_cast<qsizetype>(value.GetStringLength()));
}

[[noreturn]] void failProperty(QStringView property)
{
    throw ConversionError(
        QCoreApplication::translate("LanguageModel", "The model's answer has something else in the property “%1”.")
            .arg(property));
}

} // namespace

GeneratedContent::GeneratedContent(QString text)
    : m_value(std::move(text))
{
}

GeneratedContent::GeneratedContent(const QStringList &texts)
    : m_value(List(texts.begin(), texts.end()))
{
}

GeneratedContent::GeneratedContent(List list)
    : m_value(std::move(list))
{
}

GeneratedContent::GeneratedContent(Properties properties, std::optional<QUuid> id)
    : m_value(std::move(properties))
    , m_id(id)
{
}

class GeneratedContent::Json
{
public:
    static GeneratedContent read(const rapidjson::Value &value, int depth)
    {
        if (depth > deepestNesting)
            throw ConversionError(
                QCoreApplication::translate("LanguageModel", "The model's answer is nested too deeply."));
        if (value.IsString())
            return GeneratedContent(toText(value));
        if (value.IsArray())
            return readList(value, depth);
        if (value.IsObject())
            return readObject(value, depth);
        return {};
    }

    static void write(rapidjson::Writer<rapidjson::StringBuffer> &writer, const GeneratedContent &content)
    {
        if (const auto *text = std::get_if<QString>(&content.m_value)) {
            writeJsonString(writer, *text);
        } else if (const auto *list = std::get_if<List>(&content.m_value)) {
            writer.StartArray();
            for (const GeneratedContent &element : *list)
                write(writer, element);
            writer.EndArray();
        } else if (const auto *properties = std::get_if<Properties>(&content.m_value)) {
            writer.StartObject();
            for (const auto &[name, value] : *properties) {
                writeJsonString(writer, name);
                write(writer, value);
            }
            writer.EndObject();
        } else {
            writer.Null();
        }
    }

private:
    static GeneratedContent readList(const rapidjson::Value &value, int depth)
    {
        List list;
        list.reserve(value.Size());
        for (const rapidjson::Value &element : value.GetArray())
            list.push_back(read(element, depth + 1));
        return {std::move(list)};
    }

    static GeneratedContent readObject(const rapidjson::Value &value, int depth)
    {
        Properties properties;
        properties.reserve(value.MemberCount());
        for (const auto &member : value.GetObject())
            properties.emplace_back(toText(member.name), read(member.value, depth + 1));
        return {std::move(properties)};
    }
};

GeneratedContent GeneratedContent::fromJson(const QByteArray &json)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag>(
        json.constData(), static_cast<size_t>(json.size()));
    if (document.HasParseError())
        throw ConversionError(QCoreApplication::translate("LanguageModel", "The model's answer is not complete JSON."));
    return Json::read(document, 0);
}

QByteArray GeneratedContent::toJson() const
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    Json::write(writer, *this);
    return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

const GeneratedContent *GeneratedContent::find(QStringView property) const
{
    const auto *properties = std::get_if<Properties>(&m_value);
    if (!properties)
        throw ConversionError(QCoreApplication::translate("LanguageModel", "The model's answer is not an object."));
    const auto found =
        std::ranges::find_if(*properties, [property](const auto &member) { return member.first == property; });
    return found == properties->end() ? nullptr : &found->second;
}

QString GeneratedContent::text(QStringView property) const
{
    std::optional<QString> text = optionalText(property);
    if (!text)
        throw ConversionError(
            QCoreApplication::translate("LanguageModel", "The model's answer lacks the property “%1”.").arg(property));
    return *std::move(text);
}

QStringList GeneratedContent::texts(QStringView property) const
{
    std::optional<QStringList> texts = optionalTexts(property);
    if (!texts)
        throw ConversionError(
            QCoreApplication::translate("LanguageModel", "The model's answer lacks the property “%1”.").arg(property));
    return *std::move(texts);
}

std::optional<QString> GeneratedContent::optionalText(QStringView property) const
{
    const GeneratedContent *value = find(property);
    if (!value)
        return std::nullopt;
    const auto *text = std::get_if<QString>(&value->m_value);
    if (!text)
        failProperty(property);
    return *text;
}

std::optional<QStringList> GeneratedContent::optionalTexts(QStringView property) const
{
    const GeneratedContent *value = find(property);
    if (!value)
        return std::nullopt;
    const auto *list = std::get_if<List>(&value->m_value);
    if (!list)
        failProperty(property);
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(list->size()));
    for (const GeneratedContent &element : *list) {
        const auto *text = std::get_if<QString>(&element.m_value);
        if (!text)
            failProperty(property);
        texts.append(*text);
    }
    return texts;
}

} // namespace lumora
