// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace lumora {

/// The documents that the user has imported, and their folder. Used on the main thread.
class DocumentLibrary : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<lumora::ImportedDocument> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    /// Reads documents.json from the documents folder of the data directory. A list that cannot be read counts as empty
    /// and is set aside before the first save. Nothing is written.
    explicit DocumentLibrary(std::optional<QString> applicationSupport, QObject *parent = nullptr);

    /// In import order, oldest first.
    const QList<ImportedDocument> &documents() const { return m_documents; }

    /// The last import's failure; null where there is none.
    const QString &errorMessage() const { return m_errorMessage; }

    /// The domain of the library's items in the search index.
    static QString domain();

    /// Where the stored copies and documents.json lie, created or not. Absent without a data directory.
    std::optional<QString> storageDirectory() const;

    /// Replaces documents.json. A failure is silent and leaves the file as it was; a missing folder is one.
    void save();

Q_SIGNALS:
    void documentsChanged();
    void errorMessageChanged();

private:
    enum class ListFile {
        unknown, ///< not read, so what may lie there is set aside before the first write
        ours,    ///< what lies there was read, or written, by this library
    };

    std::optional<QString> listFilePath() const;
    void load();

    std::optional<QString> m_applicationSupport;
    QList<ImportedDocument> m_documents;
    QString m_errorMessage;
    ListFile m_listFile = ListFile::unknown;
};

} // namespace lumora
