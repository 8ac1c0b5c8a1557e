// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/markdown.h"

#include "fuzz/fuzztarget.h"
#include "ui/growingmarkdown.h"

#include <algorithm>

using namespace lumora;

namespace {

constexpr char16_t startOfFrame = 0xFDD0; // as a QTextDocument marks its tables
constexpr char16_t endOfFrame = 0xFDD1;

bool isHarmless(const MarkdownSpan &span)
{
    const bool isPermitted = span.link.isEmpty() || QStringList{"http", "https", "mailto"}.contains(span.link.scheme());
    return isPermitted && std::ranges::none_of(span.text, [](QChar unit) {
               return unit.isNull() || unit == u'\n' || unit == u'\r' || unit == QChar::ParagraphSeparator ||
                      unit == QChar::LineSeparator || unit == QChar::ObjectReplacementCharacter ||
                      unit == startOfFrame || unit == endOfFrame;
           });
}

void check(const QList<MarkdownLine> &lines)
{
    for (const MarkdownLine &line : lines) {
        fuzz::require(std::ranges::all_of(line.spans, isHarmless), "A line has what can do something.");
        for (const QList<MarkdownCell> &row : line.table) {
            fuzz::require(row.size() == line.table.first().size(), "The rows of a table differ.");
            for (const MarkdownCell &cell : row)
                fuzz::require(std::ranges::all_of(cell.spans, isHarmless), "A cell has what can do something.");
        }
    }
}

} // namespace

// Nothing in a message can load, run or lead anywhere but to a permitted address, also while it is being written.
void lumora::fuzz::tryInput(std::string_view input)
{
    const QString text = QString::fromUtf8(input.data(), qsizetype(input.size()));
    check(readMarkdown(text));
    check(readMarkdown(withEndClosed(text)));
    check(readVerbatim(text));
}
