// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/database.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <mutex>
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

    /// What tells a file from another that takes its place.
    struct Identity
    {
        quint64 device = 0;
        quint64 number = 0;

        bool operator==(const Identity &) const = default;
    };

    /// A connection that reads, and the file that it has open.
    struct Reader
    {
        Database database;
        Identity identity;
    };

    /// Touches no file yet.
    explicit IndexFile(QString path);

    /// Any thread. Nothing where there is no index yet.
    std::optional<Reader> openForReading();
    /// Any thread. Keeps a reader that has not failed for the next one who reads: it knows the tables already.
    void giveBack(Reader reader);

    /// On the thread that writes, only: makes it an index of this layout, whose words are found by the rules of this
    /// program. Nothing where there is none and none is to be created.
    std::optional<Database> openForWriting(IfMissing ifMissing, std::chrono::milliseconds patience) const;

    /// How often the file was removed because it was broken. Any thread.
    int removals() const { return m_removals; }

    /// On the thread that writes, only: removes the file and what lies beside it, since it was found broken when it had
    /// been removed that often; nothing happens where it has been removed since.
    void removeBroken(int removalsThen);

private:
    /// Nothing where there is no file.
    std::optional<Identity> identity() const;
    void create() const;
    std::optional<Reader> takeIdle();

    const QString m_path;
    std::atomic<int> m_removals = 0;
    std::mutex m_idleLock;
    std::optional<Reader> m_idle;
};

} // namespace lumora
