// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/modelfiles.h"

#include "platform/model/local/ggufkind.h"

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
#include <vector>

namespace lumora {

namespace {

constexpr int mostParts = 1000;      // a name that says more is just a name
constexpr int leastNameInCommon = 3; // characters

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

bool isFirstPart(const QString &fileName)
{
    const auto part = partOf(fileName);
    return !part || part->number == 1;
}

void add(const QString &path, FoundFile &file)
{
    struct stat facts
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0) {
        file.isWhole = false;
        return;
    }
    const auto nanoseconds = [](const timespec &time) { return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec; };
    file.parts.append(path);
    file.size += facts.st_size;
    file.modified = std::max(file.modified, nanoseconds(facts.st_mtim) / 1'000'000);
    file.touched = std::max(file.touched, nanoseconds(facts.st_ctim));
    file.identity = file.identity * 31 + facts.st_ino;
}

FoundFile look(const QFileInfo &info)
{
    FoundFile file{info.absoluteFilePath()};
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

QFileInfoList usableFilesIn(const QDir &folder, GgufKind kind)
{
    // Names may end in any case; the filter compares so.
    QFileInfoList files = folder.entryInfoList({QStringLiteral("*.gguf")}, QDir::Files | QDir::Readable);
    erase_if(files, [kind](const QFileInfo &info) {
        return !isUsable(info) || !isFirstPart(info.fileName()) || ggufKind(info.absoluteFilePath()) != kind;
    });
    return files;
}

/// The model files that there are, in the order of preference.
std::vector<FoundFile> modelFiles(const std::optional<QString> &folder, const QString &builtInPath)
{
    std::vector<FoundFile> files;
    if (folder) {
        const QFileInfoList own = usableFilesIn(QDir(*folder), GgufKind::model);
        std::ranges::transform(own, std::back_inserter(files), look);
    }
    std::ranges::sort(files, std::greater(), [](const FoundFile &file) { return std::tie(file.modified, file.path); });
    if (const QFileInfo builtIn(builtInPath); isUsable(builtIn))
        files.push_back(look(builtIn));
    return files;
}

// A time in the future is a wrong clock and says nothing.
bool isOlderThan(std::chrono::milliseconds moments, qint64 modified)
{
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - modified;
    return age < 0 || age >= moments.count();
}

std::optional<FoundFile> projectorFor(const QString &modelPath)
{
    const QFileInfo model(modelPath);
    QStringList names;
    for (const QFileInfo &info : usableFilesIn(model.dir(), GgufKind::projector))
        names.append(info.fileName());
    const auto name = matchingProjector(model.fileName(), names);
    return name ? std::optional(look(QFileInfo(model.dir(), *name))) : std::nullopt;
}

qsizetype lengthInCommon(const QString &left, const QString &right)
{
    qsizetype longest = 0;
    std::vector<qsizetype> before(size_t(right.size()) + 1); // of what ends at each place of right
    for (const QChar character : left) {
        std::vector<qsizetype> lengths(before.size());
        for (size_t at = 1; at < lengths.size(); ++at) {
            if (right.at(qsizetype(at) - 1) == character)
                lengths[at] = before[at - 1] + 1;
            longest = std::max(longest, lengths[at]);
        }
        before = std::move(lengths);
    }
    return longest;
}

QString stem(const QString &fileName)
{
    return fileName.chopped(fileName.endsWith(QLatin1String(".gguf"), Qt::CaseInsensitive) ? 5 : 0).toLower();
}

} // namespace

bool isSameModel(const ModelFile &left, const ModelFile &right)
{
    return static_cast<const FoundFile &>(left) == static_cast<const FoundFile &>(right);
}

std::optional<ModelFile> chooseModelFile(const std::optional<QString> &folder, const QString &builtInPath,
                                         std::chrono::milliseconds moments)
{
    const std::vector<FoundFile> files = modelFiles(folder, builtInPath);
    if (files.empty())
        return std::nullopt;
    auto chosen = std::ranges::find_if(
        files, [moments](const FoundFile &file) { return file.isWhole || !isOlderThan(moments, file.modified); });
    if (chosen == files.end())
        chosen = files.begin();
    return ModelFile{*chosen, projectorFor(chosen->path)};
}

std::optional<QString> matchingProjector(const QString &model, const QStringList &projectors)
{
    if (projectors.size() == 1)
        return projectors.first();
    std::optional<QString> best;
    qsizetype longest = leastNameInCommon - 1;
    for (const QString &projector : projectors) {
        const qsizetype length = lengthInCommon(stem(model), stem(projector));
        if (length > longest)
            best = projector;
        longest = std::max(longest, length);
    }
    return best;
}

std::optional<QString> unreadableModelFile(const std::optional<QString> &folder, const QString &builtInPath)
{
    QFileInfoList files;
    // A link to nowhere is a system file.
    if (folder)
        files = QDir(*folder).entryInfoList({QStringLiteral("*.gguf")}, QDir::Files | QDir::System);
    files.append(QFileInfo(builtInPath));
    for (const QFileInfo &info : std::as_const(files)) {
        const QString path = info.absoluteFilePath();
        const bool isThere = info.isSymLink() || info.isFile();
        if (isThere && !info.isReadable() && isFirstPart(info.fileName()) && ggufKind(path) == GgufKind::model)
            return path;
    }
    return std::nullopt;
}

bool isSettled(const ModelFile &file, const std::optional<ModelFile> &lookBefore, std::chrono::milliseconds moments)
{
    if (!file.isWhole)
        return false;
    if (lookBefore && lookBefore->path == file.path && *lookBefore != file)
        return false;
    return isOlderThan(moments, file.modified) && (!file.projector || isOlderThan(moments, file.projector->modified));
}

qint64 memorySize()
{
    return qint64{::sysconf(_SC_PHYS_PAGES)} * ::sysconf(_SC_PAGESIZE);
}

} // namespace lumora
