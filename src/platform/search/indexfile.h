// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/search/database.h"

#include <QString>

#include <chrono>
#include <functional>
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

    /// What tells a file from another that takes its place, also where that gets its number.
    struct Identity
    {
        quint64 device = 0;
        quint64 number = 0;
        qint64 creation = 0; ///< in nanoseconds; 0 where the file system does not keep it

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

    /// Of the file that lies there now; nothing where there is none. Any thread.
    std::optional<Identity> identity() const;

    /// Any thread. Nothing where there is no index yet.
    std::optional<Reader> openForReading();
    /// Any thread. Keeps a reader that has not failed for the next one who reads: it knows the tables already.
    void giveBack(Reader reader);

    /// On the thread that writes, only: makes it an index of this layout, whose words are found by the rules of this
    /// program. Where those have changed, all words are found anew, which may take minutes; that fails as soon as
    /// isUnwanted says so, and leaves the index as it was. Nothing where there is none and none is to be created.
    std::optional<Database> openForWriting(IfMissing ifMissing, std::chrono::milliseconds patience,
                                           const std::function<bool()> &isUnwanted) const;

    /// Removes the file that was found broken, and what lies beside it. Nothing happens where another has taken its
    /// place, by this program's doing or another's. On the thread that writes, only.
    void removeBroken(const Identity &broken) const;

private:
    void create() const;
    std::optional<Reader> takeIdle();

    const QString m_path;
    std::mutex m_idleLock;
    std::optional<Reader> m_idle;
};

} // namespace lumora
