// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/pickablefiles.h"

#include "platform/images/imagefile.h"

#include <QFileInfo>
#include <QMimeDatabase>

#include <algorithm>
#include <iterator>

namespace lumora {

namespace {

const QStringList &documentExtensions()
{
    static const QStringList extensions{QStringLiteral("txt"), QStringLiteral("text"), QStringLiteral("md"),
                                        QStringLiteral("pdf")};
    return extensions;
}

QString patterns(const QStringList &extensions)
{
    QStringList patterns;
    for (const QString &extension : extensions) {
        const QString capitalised = extension.left(1).toUpper() + extension.mid(1);
        for (const QString &written : {extension, extension.toUpper(), capitalised}) // dialogs tell cases apart
            patterns << QStringLiteral("*.") + written;
    }
    return patterns.join(u' ');
}

bool isImage(const QUrl &location)
{
    return location.isLocalFile() && QFileInfo(location.toLocalFile()).isFile() &&
           QMimeDatabase().mimeTypeForFile(location.toLocalFile()).name().startsWith(QLatin1String("image/"));
}

bool isDocument(const QUrl &location)
{
    return location.isLocalFile() &&
           documentExtensions().contains(QFileInfo(location.toLocalFile()).suffix().toLower());
}

} // namespace

QString PickableFiles::imagePatterns()
{
    return patterns(readableImageExtensions());
}

QString PickableFiles::documentPatterns()
{
    return patterns(documentExtensions());
}

QUrl PickableFiles::imageAmong(const QList<QUrl> &locations)
{
    const auto found = std::ranges::find_if(locations, isImage);
    return found == locations.end() ? QUrl() : *found;
}

QList<QUrl> PickableFiles::documentsAmong(const QList<QUrl> &locations)
{
    QList<QUrl> documents;
    std::ranges::copy_if(locations, std::back_inserter(documents), isDocument);
    return documents;
}

} // namespace lumora
