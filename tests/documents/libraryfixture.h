// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/documentlibrary.h"
#include "platform/search/userquery.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace lumora {

/// What every failed import begins with.
inline const QString notImported = QStringLiteral("Could not import document: ");

/// A data directory, on which any number of libraries may start one after another.
class LibraryFixture
{
public:
    std::unique_ptr<DocumentLibrary> open() const
    {
        return std::make_unique<DocumentLibrary>(data.path(), PdfTextReader{.helper = path("helper")});
    }

    QString path(const QString &name) const { return data.filePath(name); }
    QString indexPath() const { return path("Lumora/SearchIndex.sqlite"); }

    /// A file with this content that a user may pick.
    QString pick(const QString &name, const QByteArray &content) const
    {
        QDir().mkpath(path("picked"));
        QFile file(path("picked/" + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    /// Makes what stands in for the program that reads PDFs. It works in the data directory.
    void helperSays(const QByteArray &script) const
    {
        QFile helper(path("helper"));
        if (!helper.open(QIODevice::WriteOnly) ||
            !helper.write("#!/bin/sh\ncd '" + QFile::encodeName(data.path()) + "'\n" + script + "\n"))
            qFatal("cannot write the helper");
        helper.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// Waits for the import's end.
    static void import(DocumentLibrary &library, const QString &file)
    {
        library.add(QUrl::fromLocalFile(file));
        QTRY_VERIFY_WITH_TIMEOUT(!library.isImporting(), 30000);
    }

    /// The stored copies' names.
    QStringList copies() const
    {
        return QDir(path("Lumora/Documents")).entryList(QDir::Files).filter(QRegularExpression("^[0-9A-F-]{36}"));
    }

    /// What the index finds.
    static QList<SearchableItem> indexed(const DocumentLibrary &library, const QString &query)
    {
        UserQuery items(library.index(), query, {{"title", "textContent", "contentDescription"}, 8});
        QList<SearchableItem> found;
        while (const std::optional<SearchableItem> item = items.next())
            found.append(*item);
        return found;
    }

    QTemporaryDir data;
};

} // namespace lumora
