// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace lumora {

/// A file as one look found it. A model that was split into several files counts as one: its first part.
struct FoundFile
{
    QString path;
    qint64 size = 0;      ///< bytes, all parts together
    qint64 modified = 0;  ///< milliseconds since 1970, of the part that changed last
    qint64 touched = 0;   ///< the same in nanoseconds, and no program can set it
    quint64 identity = 0; ///< of the files themselves: another one under the same name has another
    bool isWhole = true;  ///< all parts are there
    QStringList parts;    ///< the paths of all, the first one's first

    bool operator==(const FoundFile &) const = default;
};

/// A model file, and the one beside it that lets it read images.
struct ModelFile : FoundFile
{
    std::optional<FoundFile> projector;

    bool operator==(const ModelFile &) const = default;
};

/// Whether the two differ in nothing but their projectors.
bool isSameModel(const ModelFile &left, const ModelFile &right);

/// The newest readable *.gguf in the folder, leaving out projectors and later parts of split files; otherwise the
/// built-in one, if it is there. One with a part missing that nobody has written to during the last moments is passed
/// over where any whole one is to be had.
std::optional<ModelFile> chooseModelFile(const std::optional<QString> &folder, const QString &builtInPath,
                                         std::chrono::milliseconds moments);

/// The projector that goes with a model: the only one, or of several the one whose name has the longest part in common
/// with the model's, of three characters at least. Both are names of files; nothing where there is none.
std::optional<QString> matchingProjector(const QString &model, const QStringList &projectors);

/// A *.gguf in the folder, or the built-in file, that is there but cannot be read.
std::optional<QString> unreadableModelFile(const std::optional<QString> &folder, const QString &builtInPath);

/// Whether the file seems complete, and its projector too: no part is missing, it is as it was at the look before, if
/// there was one, and not written to during the last moments.
bool isSettled(const ModelFile &file, const std::optional<ModelFile> &lookBefore, std::chrono::milliseconds moments);

/// Bytes of this computer's memory.
qint64 memorySize();

} // namespace lumora
