// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"

#include <QList>
#include <QString>

#include <deque>

namespace lumora {
class DocumentLibrary;
}

namespace lumora::races {

/// A file that can be picked, and what is to become of its import.
struct Pick
{
    enum class Outcome {
        joins,
        hasNoText,
        failsWithCopy,
        failsWithoutCopy,
    };

    QString name;
    QByteArray content;
    Outcome outcome = Outcome::joins;
};

/// The rules of the document library, as those of the store.
struct LibraryRules
{
    QList<ImportedDocument> documents;
    QString error;
    qsizetype imports = 0;         ///< that have not ended
    qsizetype abandonedCopies = 0; ///< of imports that failed after their copy was made

    void endImport(const Pick &pick);
    void remove(const QUuid &id);
};

/// Follows a library. Imports end one after another, whenever they do.
class LibraryReference
{
public:
    const LibraryRules &now() const { return m_now; }
    bool hasCaughtUp() const { return m_imports.empty(); }

    void add(const Pick &pick);
    void remove(const QUuid &id) { m_now.remove(id); }
    /// The library has ended, and what it left behind has been opened by another one: the import that was under way
    /// may have joined the list, and the others are gone.
    QString restart(const DocumentLibrary &library);
    QString observe(const DocumentLibrary &library);
    /// The files in the folder, once no import is under way.
    QString observeCopies(const DocumentLibrary &library);

private:
    LibraryRules m_now;
    std::deque<Pick> m_imports;
    qsizetype m_copiesLeft = 0; ///< at most, by imports that did not end under the library's eyes
};

} // namespace lumora::races
