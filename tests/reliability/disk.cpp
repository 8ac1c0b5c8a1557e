// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/disk.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <fcntl.h>

namespace lumora {

namespace {

constexpr qsizetype pageSize = 4096;

std::string folderOf(const std::string &path)
{
    return path.substr(0, path.rfind('/'));
}

void write(QByteArray &content, qsizetype offset, QByteArrayView data)
{
    if (content.size() < offset + data.size())
        content.append(offset + data.size() - content.size(), '\0');
    std::ranges::copy(data, content.begin() + offset);
}

void resize(QByteArray &content, qsizetype size)
{
    if (size < content.size())
        content.truncate(size);
    else
        content.append(size - content.size(), '\0');
}

} // namespace

Disk::Disk(std::string folder)
    : m_folder(std::move(folder))
{
    m_names[m_folder] = std::make_shared<Node>(Node{.isFolder = true});
    m_syncedNames = m_names;
}

void Disk::apply(const FileCall &call)
{
    using Kind = FileCall::Kind;
    switch (call.kind) {
    case Kind::open:
        return open(call);
    case Kind::write:
        return m_open.at(call.handle)->waiting.push_back({call.offset, QByteArray(call.data.data(), call.data.size())});
    case Kind::truncate:
        return m_open.at(call.handle)->waiting.push_back({call.offset, std::nullopt});
    case Kind::sync:
        return sync(call);
    case Kind::rename:
        return rename(call);
    case Kind::link:
        return setNames(folderOf(call.to), {{call.to, call.handle >= 0 ? m_open.at(call.handle) : node(call.path)}});
    case Kind::remove:
        return setNames(folderOf(call.path), {{call.path, nullptr}});
    case Kind::makeFolder:
        return setNames(folderOf(call.path), {{call.path, std::make_shared<Node>(Node{.isFolder = true})}});
    case Kind::close:
        m_open.erase(call.handle);
        return;
    case Kind::read:
    case Kind::ask:
    case Kind::permissions:
    case Kind::lock:
        return;
    }
}

void Disk::open(const FileCall &call)
{
    const bool isNameless = (call.flags & O_TMPFILE) == O_TMPFILE;
    NodePointer file = isNameless ? nullptr : node(call.path);
    if (!file) {
        file = std::make_shared<Node>();
        if (!isNameless)
            setNames(folderOf(call.path), {{call.path, file}});
    }
    if ((call.flags & O_TRUNC) != 0)
        file->waiting.push_back({0, std::nullopt});
    m_open[call.handle] = file;
}

void Disk::sync(const FileCall &call)
{
    const NodePointer file = m_open.at(call.handle);
    if (!file->isFolder) {
        const auto all = [] { return true; };
        file->synced = contentAfter(*file, {all, all, all});
        file->waiting.clear();
        return;
    }
    std::erase_if(m_waiting, [&](const NameChange &change) {
        if (change.folder != call.path)
            return false;
        apply(m_syncedNames, change);
        return true;
    });
}

void Disk::rename(const FileCall &call)
{
    const NodePointer file = node(call.path);
    if (folderOf(call.path) != folderOf(call.to))
        qFatal("Here, files keep to their folder.");
    setNames(folderOf(call.to), {{call.path, nullptr}, {call.to, file}});
}

void Disk::setNames(const std::string &folder, const Names &names)
{
    const NameChange change{folder, names};
    apply(m_names, change);
    m_waiting.push_back(change);
}

Disk::NodePointer Disk::node(const std::string &path) const
{
    const auto found = m_names.find(path);
    return found == m_names.end() ? nullptr : found->second;
}

void Disk::apply(Names &names, const NameChange &change)
{
    for (const auto &[path, node] : change.names) {
        if (node)
            names[path] = node;
        else
            names.erase(path);
    }
}

QByteArray Disk::contentAfter(const Node &node, const PowerCut &cut)
{
    QByteArray content = node.synced;
    for (const Change &change : node.waiting) {
        if (!change.data) {
            if (cut.page())
                resize(content, change.offset);
            continue;
        }
        for (qsizetype begin = 0; begin < change.data->size();) {
            // Up to the end of the page on the disk.
            const qsizetype offset = change.offset + begin;
            const qsizetype size = std::min(pageSize - offset % pageSize, change.data->size() - begin);
            if (cut.page())
                write(content, offset, QByteArrayView(*change.data).sliced(begin, size));
            else if (cut.zeros())
                resize(content, std::max(content.size(), offset + size));
            begin += size;
        }
    }
    return content;
}

void Disk::restore(const PowerCut &cut, const QString &folder) const
{
    Names names = m_syncedNames;
    for (const NameChange &change : m_waiting) {
        if (cut.name())
            apply(names, change);
    }
    const QDir top(folder);
    for (const auto &[path, node] : names) { // a folder comes before what is in it
        const QString place = folder + QString::fromStdString(path.substr(m_folder.size()));
        if (node->isFolder) {
            if (QFileInfo::exists(QFileInfo(place).path())) // otherwise nothing leads there
                top.mkdir(place);
            continue;
        }
        QFile file(place);
        const QByteArray content = contentAfter(*node, cut);
        if (QFileInfo::exists(QFileInfo(place).path()) &&
            (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()))
            qFatal("cannot write %s", qUtf8Printable(place));
    }
}

} // namespace lumora
