// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/storagelocation.h"

#include <QDir>

namespace lumora {

std::optional<QString> applicationSupportDirectory()
{
    // A relative path there is to be passed over.
    if (const QString data = qEnvironmentVariable("XDG_DATA_HOME"); QDir::isAbsolutePath(data))
        return QDir::cleanPath(data);
    if (QDir::home() == QDir::root())
        return std::nullopt;
    return QDir::homePath() + QStringLiteral("/.local/share");
}

std::optional<QString> storageFolder(const std::optional<QString> &applicationSupport)
{
    if (!applicationSupport)
        return std::nullopt;
    return *applicationSupport + QStringLiteral("/Lumora");
}

} // namespace lumora
