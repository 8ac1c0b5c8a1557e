// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/installation.h"

#include <QDir>
#include <QFileInfo>

namespace lumora {

namespace {

QString helperPath(const QDir &programFolder, const QString &name)
{
    const QString installed = QDir::cleanPath(programFolder.filePath(QStringLiteral("../libexec/lumora/") + name));
    return QFileInfo(installed).isExecutable() ? installed : programFolder.filePath(name);
}

} // namespace

LocalModelSettings installedModel(const QString &programFolder, const std::optional<QString> &storageFolder)
{
    const QDir models(QDir::cleanPath(programFolder + QStringLiteral("/../share/lumora")));
    LocalModelSettings settings;
    if (storageFolder)
        settings.modelFolder = *storageFolder + QStringLiteral("/Models");
    settings.builtInModel = models.filePath(QStringLiteral("builtin.gguf"));
    settings.command.program = helperPath(programFolder, QStringLiteral("lumora-model"));
    return settings;
}

QString installedPdfHelper(const QString &programFolder)
{
    return helperPath(programFolder, QStringLiteral("lumora-pdf-text"));
}

QString installedImageReader(const QString &programFolder)
{
    return helperPath(programFolder, QStringLiteral("lumora-image-reader"));
}

} // namespace lumora
