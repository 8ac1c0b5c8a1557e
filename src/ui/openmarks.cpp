// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/openmarks.h"

#include <QList>

#include <algorithm>

namespace lumora {

namespace {

constexpr qsizetype longestHeldLink = 100; // UTF-16 units

/// Whether marks after it stand within a word, where they are rarely meant. Ideographs follow each other without
/// blanks.
bool isOfWord(QChar unit)
{
    return unit.isLetterOrNumber() && unit < QChar(0x2e80);
}

bool isMark(QChar unit)
{
    return unit == u'*' || unit == u'_' || unit == u'~';
}

/// Goes through a paragraph and keeps account of what is open.
class OpenMarks
{
public:
    explicit OpenMarks(QStringView paragraph);

    /// The paragraph with its end closed.
    QString closed() const;

private:
    struct Mark
    {
        QChar unit;
        qsizetype count = 0;
    };

    /// Each reads what begins at a position, and gives the position after it.
    qsizetype readCode(qsizetype at);
    qsizetype readMarks(qsizetype at);
    qsizetype readLinkEnd(qsizetype at);
    void close(Mark &mark);
    qsizetype unclearLink() const;

    QStringView m_text;
    QList<Mark> m_open;
    QList<qsizetype> m_brackets;  ///< that are open
    qsizetype m_end;              ///< what is shown ends here
    qsizetype m_linkBracket = -1; ///< of a link without its whole address; not shown
    qsizetype m_codeLength = 0;   ///< of the marks of the code that is open
};

OpenMarks::OpenMarks(QStringView paragraph)
    : m_text(paragraph)
    , m_end(paragraph.size())
{
    for (qsizetype at = 0; at < m_end;) {
        const QChar unit = m_text.at(at);
        if (unit == u'\\') {
            m_end = at + 1 == m_end ? at : m_end;
            at += 2;
        } else if (unit == u'`') {
            at = readCode(at);
        } else if (isMark(unit)) {
            at = readMarks(at);
        } else if (unit == u']') {
            at = readLinkEnd(at);
        } else {
            if (unit == u'[')
                m_brackets.append(at);
            const bool mayBeImage = unit == u'!' && at + 1 == m_end && (at == 0 || m_text.at(at - 1).isSpace());
            m_end -= mayBeImage ? 1 : 0;
            ++at;
        }
    }
}

QString OpenMarks::closed() const
{
    if (const qsizetype link = unclearLink(); link >= 0)
        return OpenMarks(m_text.first(link)).closed();
    QString text = m_text.first(m_end).toString();
    if (m_linkBracket >= 0) {
        const bool isImage = m_linkBracket > 0 && text.at(m_linkBracket - 1) == u'!';
        text.remove(m_linkBracket - (isImage ? 1 : 0), isImage ? 2 : 1);
    }
    if (m_codeLength > 0)
        text += QString(m_codeLength, u'`');
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    for (qsizetype i = m_open.size() - 1; i >= 0; --i)
        text += QString(m_open.at(i).count, m_open.at(i).unit);
    return text;
}

/// Where something begins at the end that may be a link or not; -1 for nowhere.
qsizetype OpenMarks::unclearLink() const
{
    if (m_brackets.isEmpty() || m_text.size() - m_brackets.first() > longestHeldLink)
        return -1;
    const qsizetype bracket = m_brackets.first();
    return bracket > 0 && m_text.at(bracket - 1) == u'!' ? bracket - 1 : bracket;
}

qsizetype OpenMarks::readCode(qsizetype at)
{
    const qsizetype length = runLength(m_text.sliced(at));
    for (qsizetype next = m_text.indexOf(u'`', at + length); next >= 0;) {
        const qsizetype found = runLength(m_text.sliced(next));
        if (found == length)
            return next + length;
        next = m_text.indexOf(u'`', next + found);
    }
    // Marks at the very end are the first ones of those that will close it, or open it.
    while (m_end > at && m_text.at(m_end - 1) == u'`')
        --m_end;
    m_codeLength = m_end > at ? length : 0;
    return m_text.size();
}

qsizetype OpenMarks::readMarks(qsizetype at)
{
    Mark mark{m_text.at(at), runLength(m_text.sliced(at))};
    const qsizetype end = at + mark.count;
    if (end >= m_end) {
        m_end = at; // they close what is open, or open what is not there yet
        return end;
    }
    const bool isAfterText = at > 0 && !m_text.at(at - 1).isSpace();
    const bool isBeforeText = !m_text.at(end).isSpace();
    if (isAfterText)
        close(mark);
    const bool opens =
        isBeforeText && !(isAfterText && isOfWord(m_text.at(at - 1))) && mark.count > 0 && mark.count <= 3;
    if (opens && (mark.unit != u'~' || mark.count == 2))
        m_open.append(mark);
    return end;
}

/// Takes from the mark what closes those that are open, and closes these.
void OpenMarks::close(Mark &mark)
{
    while (mark.count > 0) {
        const auto last = std::find_if(m_open.rbegin(), m_open.rend(),
                                       [unit = mark.unit](const Mark &open) { return open.unit == unit; });
        if (last == m_open.rend())
            return;
        const qsizetype closing = std::min(mark.count, last->count);
        mark.count -= closing;
        last->count -= closing;
        const bool isClosed = last->count == 0;
        m_open.erase(isClosed ? last.base() - 1 : last.base(), m_open.end());
    }
}

qsizetype OpenMarks::readLinkEnd(qsizetype at)
{
    const bool isLast = at + 1 == m_end; // and the address may follow
    if (m_brackets.isEmpty() || isLast)
        return at + 1;
    const qsizetype bracket = m_brackets.takeLast();
    if (m_text.at(at + 1) != u'(')
        return at + 1;
    const qsizetype end = m_text.indexOf(u')', at);
    if (end >= 0)
        return end + 1;
    m_linkBracket = bracket;
    m_end = at;
    return m_text.size();
}

} // namespace

QString withMarksClosed(QStringView paragraph)
{
    return OpenMarks(paragraph).closed();
}

qsizetype runLength(QStringView text)
{
    const auto end = std::ranges::find_if(text, [&](QChar unit) { return unit != text.front(); });
    return std::distance(text.begin(), end);
}

} // namespace lumora
