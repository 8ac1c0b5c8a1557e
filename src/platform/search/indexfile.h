// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/database.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <optional>

namespace lumora {

/// The file of an index: its layout, and what becomes of it when it is missing or broken. Every call throws
/// DatabaseError where it fails.
///
/// A file is not checked as a whole when it is opened, which would take long for a large one. SQLite checks each page
/// that it reads, and what it finds is a DatabaseError of the kind "broken".
class IndexFile
{
public:
    enum class IfMissing { create, leave };

    /// Touches no file yet.
    explicit IndexFile(QString path);

    /// Any thread. Nothing where there is no index yet.
    std::optional<Database> openForReading() const;

    /// On the thread that writes, only: makes it an index of this layout, whose words are found by the rules of this
    /// program. Nothing where there is none and none is to be created.
    std::optional<Database> openForWriting(IfMissing ifMissing, std::chrono::milliseconds patience) const;

    /// How often the file was removed because it was broken. Any thread.
    int removals() const { return m_removals; }

    /// On the thread that writes, only: removes the file and what lies beside it, since it was found broken when it had
    /// been removed that often; nothing happens where it has been removed since.
    void removeBroken(int removalsThen);

private:
    bool exists() const;
    void create() const;

    const QString m_path;
    std::atomic<int> m_removals = 0;
};

} // namespace lumora
