// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text/textrules.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace lumora {

bool isWhiteSpaceOrLineBreak(QChar unit)
{
    const char16_t code = unit.unicode();
    return (code >= 0x0009 && code <= 0x000D) || code == 0x0085 || code == 0x2028 || code == 0x2029 ||
           unit.category() == QChar::Separator_Space;
}

QStringView trimmed(QStringView text)
{
    while (!text.isEmpty() && isWhiteSpaceOrLineBreak(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isWhiteSpaceOrLineBreak(text.back()))
        text.chop(1);
    return text;
}

QString lowercased(const QString &text)
{
    // Read-only alias: the text is not copied before it changes.
    icu::UnicodeString lower(false, reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
    lower.toLower(icu::Locale::getRoot());
    return QString(reinterpret_cast<const QChar *>(lower.getBuffer()), lower.length());
}

QString wellFormed(const QString &text)
{
    if (text.isValidUtf16())
        return text;
    QString result = text;
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (result[i].isHighSurrogate() && i + 1 < result.size() && result[i + 1].isLowSurrogate())
            ++i;
        else if (result[i].isSurrogate())
            result[i] = QChar::ReplacementCharacter;
    }
    return result;
}

} // namespace lumora
