// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace lumora {

/// A model file as one look found it. A model that was split into several files counts as one: its first part.
struct ModelFile
{
    QString path;
    qint64 size = 0;      ///< bytes, all parts together
    qint64 modified = 0;  ///< milliseconds since 1970, of the part that changed last
    qint64 touched = 0;   ///< the same in nanoseconds, and no program can set it
    quint64 identity = 0; ///< of the files themselves: another one under the same name has another
    bool isWhole = true;  ///< all parts are there

    bool operator==(const ModelFile &) const = default;
};

/// The newest readable *.gguf in the folder, leaving out image projectors (mmproj-*) and later parts of split files;
/// otherwise the first built-in path that exists.
std::optional<ModelFile> chooseModelFile(const std::optional<QString> &folder, const QStringList &builtInPaths);

/// A *.gguf in the folder, or a built-in file, that is there but cannot be read.
std::optional<QString> unreadableModelFile(const std::optional<QString> &folder, const QStringList &builtInPaths);

/// Whether the file seems complete: no part is missing, it is as it was at the look before, if there was one, and not
/// written to during the last moments.
bool isSettled(const ModelFile &file, const std::optional<ModelFile> &lookBefore, std::chrono::milliseconds moments);

/// Whether the file begins with the GGUF magic.
bool beginsLikeModel(const QString &path);

/// Bytes of this computer's memory.
qint64 memorySize();

} // namespace lumora
