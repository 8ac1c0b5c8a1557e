// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <exception>
#include <memory>
#include <optional>

namespace lumora {

/// The bytes are not JSON, or a value is not what was asked for.
class JsonError : public std::exception
{
public:
    const char *what() const noexcept override { return "unexpected JSON"; }
};

/// A view of one value in a JsonDocument, which must outlive it. Every question that the value cannot answer throws
/// JsonError.
class JsonValue
{
public:
    /// Of an object: a member that must be there.
    JsonValue member(const char *key) const;
    /// Of an object: a member that may be missing or null.
    std::optional<JsonValue> optionalMember(const char *key) const;

    /// Of an array.
    qsizetype size() const;
    JsonValue at(qsizetype index) const;

    QString text() const;
    QStringList texts() const;
    double number() const;
    /// A number written without fraction and exponent that fits.
    qint64 integer() const;
    /// A UUID's text, in either letter case.
    QUuid identifier() const;

private:
    friend class JsonDocument;

    explicit JsonValue(const void *node)
        : m_node(node)
    {
    }

    std::optional<JsonValue> find(const char *key) const;
    QByteArrayView utf8() const;

    const void *m_node; // the parser's own value
};

/// A whole JSON text, read strictly.
class JsonDocument
{
public:
    /// Throws JsonError where the bytes are not one JSON value. Whether its texts are valid UTF-8 shows when they are
    /// read.
    explicit JsonDocument(QByteArray bytes);
    ~JsonDocument();
    Q_DISABLE_COPY_MOVE(JsonDocument)

    JsonValue root() const;

private:
    QByteArray m_bytes; // parsed in place: the texts of the document lie in it
    struct Parsed;
    std::unique_ptr<Parsed> m_parsed;
};

} // namespace lumora
