// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <exception>

namespace lumora {

/// A change of the index that was not made. The description is a sentence for the user that says what failed, why, and
/// what helps where something does.
struct SearchFailure
{
    QString description;
};

/// The index cannot be read. The description is as that of a SearchFailure.
class SearchError : public std::exception
{
public:
    explicit SearchError(QString description);

    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_description;
    QByteArray m_utf8;
};

} // namespace lumora
