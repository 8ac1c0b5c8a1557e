// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/documentlibrary.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// The imported documents as the panel lists them, in the library's order. A change touches no other row.
class DocumentListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumora::DocumentLibrary *library READ library WRITE setLibrary NOTIFY libraryChanged REQUIRED)

public:
    enum Role {
        documentRole = Qt::UserRole,
    };

    explicit DocumentListModel(QObject *parent = nullptr);

    DocumentLibrary *library() const { return m_library; }
    void setLibrary(DocumentLibrary *library);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void libraryChanged();

private:
    void update();

    QPointer<DocumentLibrary> m_library;
    QList<ImportedDocument> m_documents; ///< what the views have been told
};

} // namespace lumora
