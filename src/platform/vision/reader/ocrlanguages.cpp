// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/ocrlanguages.h"

#include <QLocale>

namespace lumora {

namespace {

// Each takes time and memory to load, and to be tried on every word that the ones before it cannot make out.
constexpr qsizetype mostLanguages = 4;

/// The data's names are those of ISO 639-2/T, but for languages that are written in more than one way.
QString dataName(const QLocale &locale)
{
    const bool isCyrillic = locale.script() == QLocale::CyrillicScript;
    switch (locale.language()) {
    case QLocale::C:
        return {};
    case QLocale::Chinese:
        return locale.script() == QLocale::TraditionalHanScript ? QStringLiteral("chi_tra") : QStringLiteral("chi_sim");
    case QLocale::Cantonese:
        return QStringLiteral("chi_tra");
    case QLocale::NorwegianBokmal:
    case QLocale::NorwegianNynorsk:
        return QStringLiteral("nor");
    case QLocale::Serbian:
        return isCyrillic ? QStringLiteral("srp") : QStringLiteral("srp_latn");
    case QLocale::Azerbaijani:
        return isCyrillic ? QStringLiteral("aze_cyrl") : QStringLiteral("aze");
    case QLocale::Uzbek:
        return isCyrillic ? QStringLiteral("uzb_cyrl") : QStringLiteral("uzb");
    case QLocale::Kurdish:
        return QStringLiteral("kmr");
    default:
        return QLocale::languageToCode(locale.language(), QLocale::ISO639Part2T | QLocale::ISO639Part3);
    }
}

// Not languages: orientation and equations. A vertical variant is loaded by its language itself.
bool isLanguage(const QString &name)
{
    return name != QLatin1String("osd") && name != QLatin1String("equ") && !name.endsWith(QLatin1String("_vert"));
}

} // namespace

QStringList recognitionLanguages(const QStringList &uiLanguages, const QStringList &installed)
{
    const QString english = QStringLiteral("eng");
    QStringList wanted;
    for (const QString &name : uiLanguages)
        wanted.append(dataName(QLocale(name)));
    wanted.append(english);

    QStringList chosen;
    for (const QString &name : std::as_const(wanted)) {
        const bool hasRoom = name == english || chosen.size() < mostLanguages - 1;
        if (hasRoom && installed.contains(name) && !chosen.contains(name))
            chosen.append(name);
    }
    QStringList others;
    for (const QString &name : installed) {
        if (isLanguage(name) && !chosen.contains(name))
            others.append(name);
    }
    // Whoever installed a few languages reads them; whoever installed all did not choose any.
    if (chosen.isEmpty() || chosen.size() + others.size() <= mostLanguages)
        chosen.append(others.mid(0, mostLanguages));
    return chosen;
}

} // namespace lumora
