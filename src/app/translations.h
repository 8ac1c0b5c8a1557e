// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace lumora {

/// Makes the interface speak the first of these languages that it is written in or translated into, and run in that
/// language's direction. The translations lie in ../share/lumora/translations, seen from the folder of the program's
/// executable: lumora_de.qm and so on. languages: as QLocale::uiLanguages gives them, most wanted first. To be called
/// once, when the application object exists.
void installTranslations(const QString &programFolder, const QStringList &languages);

} // namespace lumora
