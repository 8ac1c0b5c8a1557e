// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>

namespace lumora {

/// Characters that a QTextDocument gives a meaning of its own stand as U+FFFD, other line breaks than a line feed as
/// blanks.
QString harmless(QString text);

/// Character references, such as "&amp;" and "&#65;".
class CharacterReferences
{
public:
    /// reference: with its ampersand and semicolon. One that nobody knows stays as it is written, and so do those of a
    /// text that names more of them than anybody would.
    QString decoded(const QString &reference);

private:
    QHash<QString, QString> m_named;
};

} // namespace lumora
