// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace lumora {

/// A value that a model generated under a schema: a text, a list, or an object with its properties in order.
class GeneratedContent
{
public:
    using List = std::vector<GeneratedContent>;
    using Properties = std::vector<std::pair<QString, GeneratedContent>>;

    GeneratedContent(QString text);
    GeneratedContent(const QStringList &texts);
    GeneratedContent(List list);
    GeneratedContent(Properties properties, std::optional<QUuid> id = std::nullopt);

    /// Parses one JSON value, UTF-8. Numbers, booleans and null are kept as values of no readable type.
    /// Throws ConversionError where the text is not one whole JSON value.
    static GeneratedContent fromJson(const QByteArray &json);
    QByteArray toJson() const;

    /// The generation identifier, where the content carries one.
    std::optional<QUuid> id() const { return m_id; }

    /// A required property. Both throw ConversionError where it is missing or of another type.
    QString text(QStringView property) const;
    QStringList texts(QStringView property) const;

    /// The property, or nothing while the model has not produced it. They throw where it is of another type.
    std::optional<QString> optionalText(QStringView property) const;
    std::optional<QStringList> optionalTexts(QStringView property) const;

    bool operator==(const GeneratedContent &) const = default;

private:
    class Json;

    GeneratedContent() = default;
    const GeneratedContent *find(QStringView property) const;

    std::variant<std::monostate, QString, List, Properties> m_value;
    std::optional<QUuid> m_id;
};

} // namespace lumora
