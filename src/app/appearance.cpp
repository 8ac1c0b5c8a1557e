// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/appearance.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>

namespace lumora {

namespace {

/// Without a desktop the toolkit asks for a generic family, and gets whatever comes first.
bool isGeneric(const QString &family)
{
    return family.isEmpty() || family.startsWith(QStringLiteral("Sans"), Qt::CaseInsensitive);
}

} // namespace

void chooseFont()
{
    QFont font = QGuiApplication::font();
    if (!isGeneric(font.family()))
        return;
    for (const QString &family : {QStringLiteral("Inter"), QStringLiteral("Cantarell"), QStringLiteral("Noto Sans")}) {
        if (QFontDatabase::hasFamily(family)) {
            font.setFamily(family);
            QGuiApplication::setFont(font);
            return;
        }
    }
}

void chooseIcon()
{
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.lumora.Lumora.svg")));
}

} // namespace lumora
