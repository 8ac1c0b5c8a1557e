// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/markdowncharacters.h"

#include <QTextDocumentFragment>

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

constexpr qsizetype mostNames = 64; // looking one up takes some microseconds

QChar harmlessUnit(QChar unit)
{
    if (unit.isNull() || unit == QChar::ObjectReplacementCharacter || unit == QChar(0xfdd0) || unit == QChar(0xfdd1))
        return QChar::ReplacementCharacter;
    const bool isBreak =
        unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator || unit == u'\r' || unit == u'\n';
    return isBreak ? u' ' : unit;
}

/// reference: "&#" and a number.
QString decodedNumber(const QString &reference)
{
    const bool isHexadecimal = reference.size() > 2 && reference.at(2).toLower() == u'x';
    const QStringView digits = QStringView(reference).sliced(isHexadecimal ? 3 : 2).chopped(1);
    bool isNumber = false;
    const uint codePoint = digits.toUInt(&isNumber, isHexadecimal ? 16 : 10);
    const bool isCharacter = isNumber && codePoint <= QChar::LastValidCodePoint && !QChar::isSurrogate(codePoint);
    const char32_t character = isCharacter ? codePoint : char32_t(QChar::ReplacementCharacter);
    return harmless(QString::fromUcs4(&character, 1));
}

} // namespace

QString harmless(QString text)
{
    if (std::ranges::all_of(std::as_const(text), [](QChar unit) { return unit == harmlessUnit(unit); }))
        return text; // most are, and are not copied
    for (QChar &unit : text)
        unit = harmlessUnit(unit);
    return text;
}

QString CharacterReferences::decoded(const QString &reference)
{
    if (reference.startsWith(u"&#"))
        return decodedNumber(reference);
    const auto known = m_named.constFind(reference);
    if (known != m_named.constEnd())
        return *known;
    if (m_named.size() >= mostNames)
        return reference;
    return *m_named.insert(reference, harmless(QTextDocumentFragment::fromHtml(reference).toPlainText()));
}

} // namespace lumora
