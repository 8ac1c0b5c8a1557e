// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/problems.h"

#include <QDir>
#include <QFileInfo>

namespace lumora::problems {

namespace {

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

QString noFile(const std::optional<QString> &folder)
{
    if (!folder)
        return QStringLiteral("There is no language model.");
    return QStringLiteral("There is no language model. Put a model file (*.gguf) into the folder %1.")
        .arg(QDir::toNativeSeparators(*folder));
}

QString growing(const QString &path)
{
    return QStringLiteral("The model file %1 is still being written. Wait until it is complete.").arg(nameOf(path));
}

QString noModel(const QString &path)
{
    return QStringLiteral("The file %1 is not a model file, or not a complete one. Replace it or remove it.")
        .arg(nameOf(path));
}

QString tooLarge(const QString &path)
{
    return QStringLiteral("The model %1 is larger than this computer's memory. Use a smaller one.").arg(nameOf(path));
}

QString crashing()
{
    return QStringLiteral("The language model keeps crashing. Use another model file, or try again in a minute.");
}

} // namespace lumora::problems
