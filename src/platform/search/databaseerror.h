// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <exception>

namespace lumora {

/// The database refused or failed.
class DatabaseError : public std::exception
{
public:
    enum class Kind {
        broken, ///< the file is not an index, or not one any more: no later attempt will read it
        other,
    };

    /// description: a sentence for the user.
    DatabaseError(Kind kind, QString description);

    /// From an extended result code of SQLite and the errno behind it, 0 where there is none.
    static DatabaseError fromCode(int extendedCode, int systemError);
    static DatabaseError outOfMemory();
    /// The system has no thread for the index.
    static DatabaseError noThread();
    /// The index is about to close, so that no change is made any more.
    static DatabaseError closed();
    /// text: a message that is translated; %1 becomes the description of the errno.
    static DatabaseError fromErrno(const char *text, int systemError);

    Kind kind() const { return m_kind; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    Kind m_kind;
    QString m_description;
    QByteArray m_utf8;
};

/// Does the work, and once more where the database seems broken. To SQLite, a disk that fails to read something looks
/// like damage; but what is damaged still is when it is read again.
template <typename Work>
auto twiceIfBroken(const Work &work)
{
    try {
        return work();
    } catch (const DatabaseError &error) {
        if (error.kind() != DatabaseError::Kind::broken)
            throw;
        return work();
    }
}

} // namespace lumora
