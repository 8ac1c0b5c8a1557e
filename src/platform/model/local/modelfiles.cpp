// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/modelfiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace lumora {

namespace {

constexpr int mostParts = 1000; // a name that says more is just a name

struct Part
{
    QString stem;
    int number = 1;
    QString count; // as the name has it
};

// As llama.cpp's gguf-split names the parts: NAME-00001-of-00003.gguf
std::optional<Part> partOf(const QString &fileName)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^(.*)-(\d{5})-of-(\d{5})\.gguf$)"),
                                            QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(fileName);
    if (!match.hasMatch() || match.capturedView(3).toInt() > mostParts)
        return std::nullopt;
    return Part{match.captured(1), match.capturedView(2).toInt(), match.captured(3)};
}

bool isOnItsOwn(const QString &fileName)
{
    if (fileName.startsWith(QLatin1String("mmproj-"), Qt::CaseInsensitive))
        return false;
    const auto part = partOf(fileName);
    return !part || part->number == 1;
}

void add(const QString &path, ModelFile &file)
{
    struct stat facts
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0) {
        file.isWhole = false;
        return;
    }
    const auto nanoseconds = [](const timespec &time) { return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec; };
    file.size += facts.st_size;
    file.modified = std::max(file.modified, nanoseconds(facts.st_mtim) / 1'000'000);
    file.touched = std::max(file.touched, nanoseconds(facts.st_ctim));
    file.identity = file.identity * 31 + facts.st_ino;
}

ModelFile look(const QFileInfo &info)
{
    ModelFile file{info.absoluteFilePath()};
    add(file.path, file);
    const auto first = partOf(info.fileName());
    if (!first)
        return file;
    const int parts = first->count.toInt();
    for (int part = 2; part <= parts; ++part) {
        const QString name =
            QStringLiteral("%1-%2-of-%3.gguf")
                .arg(first->stem, QString::number(part).rightJustified(5, QLatin1Char('0')), first->count);
        add(info.dir().filePath(name), file);
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

std::optional<QString> unreadableModelFile(const std::optional<QString> &folder, const QStringList &builtInPaths)
{
    QFileInfoList files;
    // A link to nowhere is a system file.
    if (folder)
        files = QDir(*folder).entryInfoList({QStringLiteral("*.gguf")}, QDir::Files | QDir::System);
    for (const QString &path : builtInPaths)
        files.append(QFileInfo(path));
    for (const QFileInfo &info : std::as_const(files)) {
        const bool isThere = info.isSymLink() || info.isFile();
        if (isThere && !info.isReadable() && isOnItsOwn(info.fileName()))
            return info.absoluteFilePath();
    }
    return std::nullopt;
}

bool isSettled(const ModelFile &file, const std::optional<ModelFile> &lookBefore, std::chrono::milliseconds moments)
{
    if (!file.isWhole)
        return false;
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
