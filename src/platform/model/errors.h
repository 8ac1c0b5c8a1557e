// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <exception>

namespace lumora {

/// A request to the model failed. The description is a whole sentence that tells the user what happened and what helps.
class ModelError : public std::exception
{
public:
    explicit ModelError(QString description);

    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_description;
    QByteArray m_utf8;
};

/// Generated content does not have the shape that a record asks for.
class ConversionError : public ModelError
{
public:
    using ModelError::ModelError;
};

/// A wait ended because it was cancelled; never shown to the user.
class CancellationError : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

} // namespace lumora
