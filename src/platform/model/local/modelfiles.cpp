// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/modelfiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>
#include <unistd.h>

namespace lumora {

namespace {

// As llama.cpp's gguf-split names the parts: NAME-00001-of-00003.gguf
const QRegularExpression &partPattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"(^(.*)-(\d{5})-of-(\d{5})\.gguf$)"),
                                            QRegularExpression::CaseInsensitiveOption);
    return pattern;
}

bool isOnItsOwn(const QString &fileName)
{
    if (fileName.startsWith(QLatin1String("mmproj-"), Qt::CaseInsensitive))
        return false;
    const auto match = partPattern().match(fileName);
    return !match.hasMatch() || match.capturedView(2).toInt() == 1;
}

ModelFile look(const QFileInfo &info)
{
    ModelFile file{info.absoluteFilePath(), info.size(), info.lastModified().toMSecsSinceEpoch()};
    const auto match = partPattern().match(info.fileName());
    const int parts = match.hasMatch() ? match.capturedView(3).toInt() : 1;
    for (int part = 2; part <= parts; ++part) {
        const QString name =
            QStringLiteral("%1-%2-of-%3.gguf")
                .arg(match.captured(1), QString::number(part).rightJustified(5, QLatin1Char('0')), match.captured(3));
        const QFileInfo partInfo(info.dir(), name);
        if (!partInfo.exists())
            continue;
        file.size += partInfo.size();
        file.modified = std::max(file.modified, partInfo.lastModified().toMSecsSinceEpoch());
    }
    return file;
}

bool isUsable(const QFileInfo &info)
{
    return info.isFile() && info.isReadable();
}

std::optional<ModelFile> newestIn(const QString &folder)
{
    std::optional<ModelFile> newest;
    // Names may end in any case; the filter compares so.
    const auto entries = QDir(folder).entryInfoList({QStringLiteral("*.gguf")}, QDir::Files | QDir::Readable);
    for (const QFileInfo &info : entries) {
        if (!isUsable(info) || !isOnItsOwn(info.fileName()))
            continue;
        ModelFile file = look(info);
        if (!newest || std::tie(file.modified, file.path) > std::tie(newest->modified, newest->path))
            newest = std::move(file);
    }
    return newest;
}

} // namespace

std::optional<ModelFile> chooseModelFile(const std::optional<QString> &folder, const QStringList &builtInPaths)
{
    if (folder) {
        if (auto newest = newestIn(*folder))
            return newest;
    }
    for (const QString &path : builtInPaths) {
        if (const QFileInfo info(path); isUsable(info))
            return look(info);
    }
    return std::nullopt;
}

bool isSettled(const ModelFile &file, const std::optional<ModelFile> &lookBefore, std::chrono::milliseconds moments)
{
    if (lookBefore && lookBefore->path == file.path && *lookBefore != file)
        return false;
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - file.modified;
    // A time in the future is a wrong clock and says nothing.
    return age < 0 || age >= moments.count();
}

bool beginsLikeModel(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "GGUF";
}

qint64 memorySize()
{
    return qint64{::sysconf(_SC_PHYS_PAGES)} * ::sysconf(_SC_PAGESIZE);
}

} // namespace lumora
