// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace lumora {

/// The shape of an object that a model is to generate. All properties are required and come in this order.
struct GenerationSchema
{
    enum class Type {
        text,
        listOfText,
    };

    struct Property
    {
        QString name;
        QString description;
        Type type = Type::text;

        bool operator==(const Property &) const = default;
    };

    QString typeName;
    QList<Property> properties;

    /// A JSON Schema object (draft 2020-12), compact UTF-8, properties in order, every one listed as required.
    QByteArray toJson() const;

    bool operator==(const GenerationSchema &) const = default;
};

} // namespace lumora
