// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/imageformats.h"

#include "platform/images/imagefile.h"

namespace lumora {

QString ImageFormats::patterns()
{
    QStringList patterns;
    for (const QString &extension : readableImageExtensions()) {
        const QString capitalised = extension.left(1).toUpper() + extension.mid(1);
        for (const QString &written : {extension, extension.toUpper(), capitalised}) // dialogs tell cases apart
            patterns << QStringLiteral("*.") + written;
    }
    return patterns.join(u' ');
}

} // namespace lumora
