// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/growingmarkdown.h"

#include "ui/openmarks.h"

#include <QStringView>

#include <algorithm>

namespace lumora {

namespace {

bool isOneOf(QChar unit, QStringView units)
{
    return units.contains(unit);
}

/// The line without its indentation and the marks of the quotes that it stands in.
QStringView insideQuotes(QStringView line)
{
    const auto begin = std::ranges::find_if(line, [](QChar unit) { return !unit.isSpace() && unit != u'>'; });
    return line.sliced(std::distance(line.begin(), begin));
}

/// Where the last line begins.
qsizetype lastLineBegin(QStringView text)
{
    return text.lastIndexOf(u'\n') + 1;
}

/// What stands before the line that begins there.
QStringView linesBefore(QStringView text, qsizetype begin)
{
    return text.first(std::max<qsizetype>(begin - 1, 0));
}

/// Whether a line opens code: marks, and what kind of code it is.
bool opensCode(QStringView line, QStringView marks)
{
    return marks.size() >= 3 && (marks.front() == u'~' || !line.sliced(marks.size()).contains(u'`'));
}

/// The code blocks of a text.
struct Fences
{
    QStringView open;  ///< the marks that opened the code in which the text ends; empty where it does not end in code
    qsizetype end = 0; ///< where the last one that is closed ends
};

Fences findFences(QStringView text)
{
    Fences fences;
    for (qsizetype begin = 0; begin <= text.size();) {
        const qsizetype lineFeed = text.indexOf(u'\n', begin);
        const qsizetype end = lineFeed < 0 ? text.size() : lineFeed;
        const QStringView line = insideQuotes(text.sliced(begin, end - begin));
        if (!line.isEmpty() && isOneOf(line.front(), u"`~")) {
            const QStringView marks = line.first(runLength(line));
            if (fences.open.isEmpty())
                fences.open = opensCode(line, marks) ? marks : QStringView();
            else if (marks.startsWith(fences.open) && line.sliced(marks.size()).trimmed().isEmpty())
                fences = {.open = {}, .end = std::min(end + 1, text.size())};
        }
        begin = end + 1;
    }
    return fences;
}

bool isNumberOfItem(QStringView line)
{
    const bool hasStop = line.endsWith(u'.') || line.endsWith(u')');
    const QStringView digits = hasStop ? line.chopped(1) : line;
    return !digits.isEmpty() && digits.size() <= 9 &&
           std::ranges::all_of(digits, [](QChar unit) { return unit >= u'0' && unit <= u'9'; });
}

bool isMarksOnly(QStringView line)
{
    return std::ranges::all_of(line, [](QChar unit) { return isOneOf(unit, u"-=*_+#~`"); });
}

/// Whether the last line belongs to a table of which the heading is not complete yet. before: the lines above it.
bool isInTableHead(QStringView line, QStringView before)
{
    if (!line.startsWith(u'|'))
        return false;
    const QStringView above = insideQuotes(before.sliced(lastLineBegin(before))).trimmed();
    if (!above.startsWith(u'|'))
        return line.size() == 1 || isOneOf(line.at(1), u" -:|");
    const QStringView beforeThat = linesBefore(before, lastLineBegin(before));
    if (insideQuotes(beforeThat.sliced(lastLineBegin(beforeThat))).startsWith(u'|'))
        return false;
    return !line.endsWith(u'|') || line.count(u'|') < above.count(u'|');
}

/// Without last lines that may become a list, a rule, a heading, code or a table.
QStringView withoutUnclearLines(QStringView text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    const qsizetype begin = lastLineBegin(text);
    const QStringView line = insideQuotes(text.sliced(begin)).trimmed();
    const QStringView before = linesBefore(text, begin);
    if (isMarksOnly(line) || isNumberOfItem(line))
        return before;
    if (isInTableHead(line, before))
        return withoutUnclearLines(before);
    return text;
}

/// Whether the line begins a block of its own, so that no style reaches into it from above.
bool beginsBlock(QStringView line)
{
    if (line.isEmpty() || isOneOf(line.front(), u"#|"))
        return true;
    const qsizetype blank = line.indexOf(u' ');
    const QStringView word = blank < 0 ? line : line.first(blank);
    return word == u"-" || word == u"*" || word == u"+" || (isNumberOfItem(word) && !word.back().isDigit());
}

/// Where the paragraph begins that is still being written.
qsizetype lastParagraphBegin(QStringView text)
{
    qsizetype begin = lastLineBegin(text);
    while (begin > 0 && !beginsBlock(insideQuotes(text.sliced(begin)))) {
        const qsizetype previous = lastLineBegin(text.first(begin - 1));
        if (insideQuotes(text.sliced(previous, begin - 1 - previous)).isEmpty())
            break;
        begin = previous;
    }
    return begin;
}

} // namespace

QString withEndClosed(const QString &markdown)
{
    const QStringView text(markdown);
    const Fences fences = findFences(text);
    if (!fences.open.isEmpty()) {
        // What may be the first marks of those that end the code is no line of it.
        const qsizetype begin = lastLineBegin(text);
        const QStringView line = insideQuotes(text.sliced(begin)).trimmed();
        const bool mayEnd = !line.isEmpty() && line.front() == fences.open.front() && runLength(line) == line.size();
        return (mayEnd ? linesBefore(text, begin) : text).toString();
    }
    const QStringView clear = withoutUnclearLines(text.sliced(fences.end));
    const qsizetype begin = lastParagraphBegin(clear);
    const QString closed = clear.first(begin).toString() + withMarksClosed(clear.sliced(begin));
    return text.first(fences.end).toString() + withoutUnclearLines(closed).toString();
}

} // namespace lumora
