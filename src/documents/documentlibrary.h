// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/documentimport.h"

#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QUrl>

#include <memory>
#include <optional>
#include <stop_token>

namespace lumora {

/// The documents that the user has imported, their folder, and their items in the search index. Used on the main
/// thread.
class DocumentLibrary : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<lumora::ImportedDocument> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isImporting READ isImporting NOTIFY isImportingChanged)

public:
    /// Reads documents.json from the documents folder of the data directory. A list that cannot be read counts as empty
    /// and is set aside before the first save. Nothing is written.
    explicit DocumentLibrary(std::optional<QString> applicationSupport, PdfTextReader pdf = {},
                             QObject *parent = nullptr);
    /// Waits for the import that is under way, which gives up at once or is complete.
    ~DocumentLibrary() override;
    Q_DISABLE_COPY_MOVE(DocumentLibrary)

    /// In import order, oldest first.
    const QList<ImportedDocument> &documents() const { return m_documents; }

    /// The last import's failure; null where there is none.
    const QString &errorMessage() const { return m_errorMessage; }

    /// Whether an import is under way or waits for its turn.
    bool isImporting() const { return m_isImporting; }

    /// The domain of the library's items in the search index.
    static QString domain();

    /// Where the stored copies and documents.json lie, created or not. Absent without a data directory.
    std::optional<QString> storageDirectory() const;

    /// Null without a data directory. The index outlives the library where a tool still uses it.
    const std::shared_ptr<SearchIndex> &index() const { return m_index; }
    const PdfTextReader &pdf() const { return m_pdf; }

    /// Copies a picked file into the folder and makes its text known to the search index; then it joins the list.
    /// Imports are made one after another, in the order in which they are asked for, away from the main thread. Each
    /// ends with an error message or without one.
    Q_INVOKABLE void add(const QUrl &location);

    /// Takes a document out of the list, the folder and the index. Never reports.
    Q_INVOKABLE void remove(const lumora::ImportedDocument &document);

    /// Replaces documents.json. A failure is silent and leaves the file as it was; a missing folder is one.
    void save();

Q_SIGNALS:
    void documentsChanged();
    void errorMessageChanged();
    void isImportingChanged();

private:
    enum class ListFile {
        unknown, ///< not read, so what may lie there is set aside before the first write
        ours,    ///< what lies there was read, or written, by this library
    };

    std::optional<QString> listFilePath() const;
    void load();
    void setErrorMessage(const QString &message);
    void setImporting(bool isImporting);
    void startNextImport();
    void endImport();
    void append(const ImportedDocument &document);

    std::optional<QString> m_applicationSupport;
    PdfTextReader m_pdf;
    std::shared_ptr<SearchIndex> m_index;
    QList<ImportedDocument> m_documents;
    QString m_errorMessage;
    ListFile m_listFile = ListFile::unknown;
    QList<QUrl> m_waiting; ///< to be imported, first come first
    bool m_isImporting = false;
    ImportedDocument m_importing; ///< as it will join the list
    QFutureWatcher<DocumentImport::Outcome> m_import;
    QThreadPool m_worker; ///< the library's own: an import may take a minute
    std::stop_source m_stop;
};

} // namespace lumora
