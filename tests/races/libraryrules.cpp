// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/libraryrules.h"

#include "documents/documentlibrary.h"
#include "races/comparison.h"

#include <QDir>

#include <algorithm>
#include <tuple>
#include <utility>

namespace lumora::races {

void LibraryRules::endImport(const Pick &pick)
{
    --imports;
    switch (pick.outcome) {
    case Pick::Outcome::joins: {
        ImportedDocument document{.id = {}, .name = pick.name};
        document.filename = "*." + QFileInfo(pick.name).suffix().toLower();
        documents.append(document);
        error.clear();
        break;
    }
    case Pick::Outcome::hasNoText:
        error = "No readable text was found in this document. Scanned PDFs need OCR first.";
        break;
    case Pick::Outcome::failsWithCopy:
        ++abandonedCopies;
        [[fallthrough]];
    case Pick::Outcome::failsWithoutCopy:
        error = "Could not import document: *";
        break;
    }
}

void LibraryRules::remove(const QUuid &id)
{
    documents.removeIf([&id](const ImportedDocument &each) { return each.id == id; });
}

void LibraryReference::add(const Pick &pick)
{
    m_imports.push_back(pick);
    ++m_now.imports;
}

QString LibraryReference::observe(const DocumentLibrary &library)
{
    LibraryRules candidate = m_now;
    QString difference = compare(candidate, library);
    for (size_t ended = 0; ended < m_imports.size() && !difference.isEmpty(); ++ended) {
        m_now.endImport(m_imports[ended]);
        candidate = m_now;
        const QString next = compare(candidate, library);
        if (next.isEmpty())
            m_imports.erase(m_imports.begin(), m_imports.begin() + ptrdiff_t(ended) + 1);
        difference = next.isEmpty() ? next : difference + "\n or " + next;
    }
    m_now = candidate;
    return difference;
}

QString LibraryReference::restart(const DocumentLibrary &library)
{
    const std::deque<Pick> imports = std::exchange(m_imports, {});
    const auto left = [&library](LibraryRules rules) {
        rules.imports = 0;
        rules.error.clear();
        return std::pair(compare(rules, library), rules);
    };
    // Some of them may have ended without a difference that can be seen, as by the failure of the one before.
    LibraryRules possible = m_now;
    auto [difference, rules] = left(possible);
    for (auto import = imports.begin(); import != imports.end() && !difference.isEmpty(); ++import) {
        possible.endImport(*import);
        std::tie(difference, rules) = left(possible);
        if (import->outcome == Pick::Outcome::joins)
            break;
    }
    m_copiesLeft = std::ranges::count(imports, Pick::Outcome::failsWithCopy, &Pick::outcome);
    rules.abandonedCopies = m_now.abandonedCopies;
    m_now = rules;
    return difference;
}

QString LibraryReference::observeCopies(const DocumentLibrary &library)
{
    const QStringList files = QDir(*library.storageDirectory()).entryList(QDir::Files | QDir::Hidden);
    const qsizetype copies = files.size() - (files.contains("documents.json") ? 1 : 0);
    for (const ImportedDocument &document : m_now.documents) {
        if (!files.contains(document.filename))
            return "the copy of a document is gone: " + document.name;
    }
    // What a library leaves behind that ends during an import.
    m_now.abandonedCopies += std::clamp<qsizetype>(copies - m_now.documents.size() - m_now.abandonedCopies, 0,
                                                   std::exchange(m_copiesLeft, 0));
    if (copies != m_now.documents.size() + m_now.abandonedCopies)
        return QString("there are %1 copies of %2 documents and %3 failed imports")
            .arg(copies)
            .arg(m_now.documents.size())
            .arg(m_now.abandonedCopies);
    return {};
}

} // namespace lumora::races
