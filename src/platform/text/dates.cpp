// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/dates.h"

#include <QTimeZone>

#include <unicode/datefmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <memory>

namespace lumora {

namespace {

icu::UnicodeString toIcu(const QString &text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
}

/// The locale of the user's dates, in the order in which POSIX asks the environment for it.
QString userLocaleName()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (QString name = qEnvironmentVariable(variable); !name.isEmpty())
            return name;
    }
    return QStringLiteral("C");
}

/// The zone of this name; where it has none that is known, such as a rule in the environment, the machine's own.
std::unique_ptr<icu::TimeZone> makeTimeZone(const QString &name)
{
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(toIcu(name)));
    if (*zone == icu::TimeZone::getUnknown())
        zone.reset(icu::TimeZone::detectHostTimeZone());
    return zone;
}

} // namespace

QString fullDateTime(double millisecondsSinceEpoch, const QString &localeName, const QString &timeZone)
{
    const QString locale = localeName.isEmpty() ? userLocaleName() : localeName;
    const QString zone = timeZone.isEmpty() ? QString::fromUtf8(QTimeZone::systemTimeZoneId()) : timeZone;

    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kFull, icu::DateFormat::kFull, icu::Locale::createCanonical(locale.toUtf8().constData())));
    format->adoptTimeZone(makeTimeZone(zone).release());
    icu::UnicodeString text;
    format->format(millisecondsSinceEpoch, text);
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

} // namespace lumora
