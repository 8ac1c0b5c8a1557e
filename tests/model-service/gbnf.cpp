// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gbnf.h"

#include <QRegularExpression>

#include <stdexcept>

namespace lumora::service {

namespace {

/// A rule's right side as a regular expression, byte by byte; the names of other rules become calls of their groups.
/// Classes and escapes are written alike in both.
QString expression(const QString &rule)
{
    static const QRegularExpression part(
        R"x( +|"(?<text>(?:[^"\\]|\\.)*)"|(?<kept>\[(?:[^\]\\]|\\.)*\]|\{[0-9,]+\}|[)|?*])|(?<open>\()|(?<name>[a-z][a-z0-9-]*))x");
    QString result;
    qsizetype at = 0;
    while (at < rule.size()) {
        const auto match =
            part.match(rule, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            throw std::runtime_error("not understood: " + rule.mid(at).toStdString());
        at = match.capturedEnd();
        QString text = match.captured("text");
        result += match.captured("kept");
        if (match.hasCaptured("open"))
            result += "(?:";
        if (match.hasCaptured("name"))
            result += "(?&" + match.captured("name").replace('-', '_') + ')';
        if (match.hasCaptured("text"))
            result += "(?:" + text.replace(QRegularExpression(R"(([][(){}.*+?^$|]))"), R"(\\1)") + ')';
    }
    return result;
}

} // namespace

bool grammarTakes(const std::string &grammar, const std::string &text)
{
    QString groups;
    for (const QString &line : QString::fromLatin1(grammar.c_str()).split('\n', Qt::SkipEmptyParts)) {
        const QStringList sides = line.split(" ::= ");
        if (sides.size() != 2)
            throw std::runtime_error("a line is no rule: " + line.toStdString());
        groups += "(?<" + QString(sides[0]).replace('-', '_') + '>' + expression(sides[1]) + ')';
    }
    const QRegularExpression whole("\\A(?(DEFINE)" + groups + ")(?&root)\\z");
    if (!whole.isValid())
        throw std::runtime_error(whole.errorString().toStdString());
    return whole.match(QString::fromLatin1(text.c_str(), qsizetype(text.size()))).hasMatch();
}

} // namespace lumora::service
