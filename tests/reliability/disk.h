// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "reliability/filecalls.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// A disk that keeps for certain only what it was told to sync: the content of a file with the file, a name with the
/// folder in which it stands. Of the rest, a power cut leaves any part.
class Disk
{
public:
    /// folder: the one that has this disk's files, and that exists from the start.
    explicit Disk(std::string folder);

    /// A call that has succeeded, in order.
    void apply(const FileCall &call);

    /// Whether something that was not synced is kept; asked for each page of content and each change of a name. A page
    /// that is lost may leave zeros where the file was made longer.
    using Kept = std::function<bool()>;
    struct PowerCut
    {
        Kept name;
        Kept page;
        Kept zeros;
    };
    /// Writes what is there after a power cut to a folder that is empty.
    void restore(const PowerCut &cut, const QString &folder) const;

private:
    struct Change ///< of the content of a file
    {
        off_t offset = 0;
        std::optional<QByteArray> data; ///< none: the file gets this length
    };
    struct Node
    {
        bool isFolder = false;
        QByteArray synced;
        std::vector<Change> waiting;
    };
    using NodePointer = std::shared_ptr<Node>;
    using Names = std::map<std::string, NodePointer>;
    /// What one step does to the names of a folder. All of it or nothing; null takes a name away.
    struct NameChange
    {
        std::string folder;
        Names names;
    };

    void open(const FileCall &call);
    void sync(const FileCall &call);
    void rename(const FileCall &call);
    void setNames(const std::string &folder, const Names &names);
    NodePointer node(const std::string &path) const;
    static void apply(Names &names, const NameChange &change);
    static QByteArray contentAfter(const Node &node, const PowerCut &cut);

    std::string m_folder;
    Names m_names;
    Names m_syncedNames;
    std::vector<NameChange> m_waiting;
    std::map<int, NodePointer> m_open;
};

} // namespace lumora
