// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"
#include "platform/search/userquery.h"

#include <QTemporaryDir>

using namespace lumora;

namespace {

std::shared_ptr<SearchIndex> makeIndex()
{
    static const QTemporaryDir folder;
    auto index = std::make_shared<SearchIndex>(folder.filePath("index.sqlite"));
    const auto failed = index
                            ->indexSearchableItems({{"one", "fuzz", "Plan", "Our lighthouse keeps its light.", ""},
                                                    {"two", "fuzz", "Menu", "Soup OR bread NOT near the table", ""}})
                            .result();
    fuzz::require(!failed, "The index cannot be written.");
    return index;
}

} // namespace

// Any text is a question: the index can always answer it, and finds what it names.
void lumora::fuzz::tryInput(std::string_view input)
{
    static const std::shared_ptr<SearchIndex> index = makeIndex();
    const QString text = QString::fromUtf8(input.data(), qsizetype(input.size()));
    QStringList found;
    for (const QString &question : {text, "lighthouse. " + text}) {
        UserQuery query(index, question, {{"title", "textContent"}, 8});
        found.clear();
        while (const auto item = query.next())
            found.append(item->uniqueIdentifier);
        require(found.removeDuplicates() == 0, "A document is found twice.");
    }
    require(found.contains("one"), "A document is not found by its word, since there are others beside it.");
}
