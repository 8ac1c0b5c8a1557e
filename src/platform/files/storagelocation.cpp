// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/storagelocation.h"

#include <QDir>
#include <QStandardPaths>

namespace lumora {

std::optional<QString> applicationSupportDirectory()
{
    const bool hasHome = QDir::home() != QDir::root();
    if (!hasHome && !QDir::isAbsolutePath(qEnvironmentVariable("XDG_DATA_HOME")))
        return std::nullopt;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

std::optional<QString> storageFolder(const std::optional<QString> &applicationSupport)
{
    if (!applicationSupport)
        return std::nullopt;
    return *applicationSupport + QStringLiteral("/Lumora");
}

} // namespace lumora
