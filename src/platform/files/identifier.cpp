// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/identifier.h"

#include <cctype>

namespace lumora {

QString identifierText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> identifierFromText(QLatin1String text)
{
    constexpr qsizetype length = 36;
    if (text.size() != length)
        return std::nullopt;
    for (qsizetype i = 0; i < length; ++i) {
        const bool hyphenPlace = i == 8 || i == 13 || i == 18 || i == 23;
        const char unit = text[i].toLatin1();
        if (hyphenPlace ? unit != '-' : std::isxdigit(static_cast<unsigned char>(unit)) == 0)
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

} // namespace lumora
