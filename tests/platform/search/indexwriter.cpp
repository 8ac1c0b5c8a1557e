// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Adds items to the index given as the first argument, three with the same word in each call, and writes the number of
// the call when it has ended. Goes on until it is killed.

#include "platform/search/searchindex.h"

#include <cstdio>

using namespace lumora;

int main(int /*count*/, char **arguments)
{
    SearchIndex index(QString::fromLocal8Bit(arguments[1]));
    const QString filler = QStringLiteral(" filler of some length, so that a call is not over at once").repeated(200);
    for (int call = 0;; ++call) {
        QList<SearchableItem> items;
        for (int i = 0; i < 3; ++i)
            items.append({.uniqueIdentifier = QStringLiteral("%1-%2").arg(call).arg(i),
                          .textContent = QStringLiteral("call%1").arg(call) + filler});
        if (const SearchIndex::Outcome failed = index.indexSearchableItems(items).result()) {
            std::fprintf(stderr, "%s\n", qPrintable(failed->description));
            return 1;
        }
        std::printf("%d\n", call);
        std::fflush(stdout);
    }
}
