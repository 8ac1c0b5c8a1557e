// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/imageformats.h"

#include <QImageReader>

namespace lumora {

QStringList ImageFormats::patterns()
{
    QStringList patterns;
    for (const QByteArray &format : QImageReader::supportedImageFormats()) {
        const QString extension = QString::fromLatin1(format);
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    }
    return patterns;
}

} // namespace lumora
