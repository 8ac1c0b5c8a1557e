// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/translations.h"

#include <QDir>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace lumora {

namespace {

bool install(const QLocale &locale, const QString &catalog, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, catalog, QStringLiteral("_"), folder))
        return false;
    translator->setParent(qApp);
    return QCoreApplication::installTranslator(translator.release());
}

/// Chinese has a catalogue for each script, named for the country that most of its readers live in.
QLocale inItsScript(const QLocale &locale)
{
    const bool isSimplified = locale.language() == QLocale::Chinese && locale.script() == QLocale::SimplifiedHanScript;
    return isSimplified ? QLocale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China) : locale;
}

} // namespace

void installTranslations(const QString &programFolder, const QStringList &languages)
{
    const QString folder = QDir::cleanPath(programFolder + QStringLiteral("/../share/lumora/translations"));
    for (const QString &language : languages) {
        const QLocale locale = inItsScript(QLocale(language));
        if (locale.language() == QLocale::English) // as the texts are written
            return;
        if (!install(locale, QStringLiteral("lumora"), folder))
            continue;
        // The toolkit's own texts, such as those of its file dialog, where they are installed.
        install(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        install(locale, QStringLiteral("qtdeclarative"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        QGuiApplication::setLayoutDirection(locale.textDirection());
        return;
    }
}

} // namespace lumora
