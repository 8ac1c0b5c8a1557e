// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/databaseerror.h"

#include <QCoreApplication>

#include <cerrno>
#include <sqlite3.h>

namespace lumora {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("lumora::Search", text);
}

int primaryCode(int extendedCode)
{
    constexpr int mask = 0xFF;
    return extendedCode & mask;
}

QString descriptionOf(int extendedCode, int systemError)
{
    const int code = primaryCode(extendedCode);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        return translated(QT_TRANSLATE_NOOP("lumora::Search",
                                            "The search index is busy: another program uses it, or it is being "
                                            "made anew after an update. Try again in a few minutes."));
    if (code == SQLITE_FULL || systemError == ENOSPC || systemError == EDQUOT)
        return translated(QT_TRANSLATE_NOOP("lumora::Search", "The disk has no room left for the search index."));
    if (code == SQLITE_NOMEM)
        return DatabaseError::outOfMemory().description();
    if (code == SQLITE_READONLY)
        return translated(
            QT_TRANSLATE_NOOP("lumora::Search", "The search index cannot be written: it or its folder is read-only."));
    const QString why =
        systemError != 0 ? qt_error_string(systemError) : QString::fromUtf8(sqlite3_errstr(extendedCode));
    return translated(QT_TRANSLATE_NOOP("lumora::Search", "The search index cannot be used: %1.")).arg(why);
}

} // namespace

DatabaseError::DatabaseError(Kind kind, QString description)
    : m_kind(kind)
    , m_description(std::move(description))
    , m_utf8(m_description.toUtf8())
{
}

DatabaseError DatabaseError::fromCode(int extendedCode, int systemError)
{
    const int code = primaryCode(extendedCode);
    if (code == SQLITE_INTERRUPT)
        return closed();
    // No item that is added can break a constraint: where one is broken, tables contradict each other.
    const bool isBroken = code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_CONSTRAINT;
    const bool isOfSystem = code == SQLITE_IOERR || code == SQLITE_CANTOPEN; // otherwise the errno is an older one
    return {isBroken ? Kind::broken : Kind::other, descriptionOf(extendedCode, isOfSystem ? systemError : 0)};
}

DatabaseError DatabaseError::outOfMemory()
{
    return {Kind::other,
            translated(QT_TRANSLATE_NOOP("lumora::Search", "There is too little memory for the search index."))};
}

DatabaseError DatabaseError::noThread()
{
    return {Kind::other, translated(QT_TRANSLATE_NOOP("lumora::Search",
                                                      "The search index cannot be used now: too many programs run on "
                                                      "this computer. Close some of them and try again."))};
}

DatabaseError DatabaseError::closed()
{
    return {Kind::other, translated(QT_TRANSLATE_NOOP("lumora::Search", "The search index was closed."))};
}

DatabaseError DatabaseError::fromErrno(const char *text, int systemError)
{
    return {Kind::other, translated(text).arg(qt_error_string(systemError))};
}

} // namespace lumora
