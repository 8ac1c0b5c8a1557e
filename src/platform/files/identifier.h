// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLatin1String>
#include <QString>
#include <QUuid>

#include <optional>

namespace lumora {

/// The canonical text of a UUID: 32 upper-case hexadecimal digits in groups of 8, 4, 4, 4 and 12, joined by hyphens.
QString identifierText(const QUuid &id);

/// Reads that form, in upper or lower case; nothing for any other text.
std::optional<QUuid> identifierFromText(QLatin1String text);

} // namespace lumora
