// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/documentlistmodel.h"

#include <algorithm>

namespace lumora {

DocumentListModel::DocumentListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void DocumentListModel::setLibrary(DocumentLibrary *library)
{
    if (m_library == library)
        return;
    if (m_library)
        m_library->disconnect(this);
    m_library = library;
    if (m_library) {
        connect(m_library, &DocumentLibrary::documentsChanged, this, &DocumentListModel::update);
        connect(m_library, &QObject::destroyed, this, &DocumentListModel::update);
    }
    update();
    Q_EMIT libraryChanged();
}

int DocumentListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_documents.size());
}

QVariant DocumentListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ImportedDocument &document = m_documents[index.row()];
    switch (role) {
    case documentRole:
        return QVariant::fromValue(document);
    case Qt::DisplayRole:
        return document.name;
    default:
        return {};
    }
}

QHash<int, QByteArray> DocumentListModel::roleNames() const
{
    return {{documentRole, "document"}};
}

// What stands at both ends in the old list and in the new one stays; between them, old rows go and new ones come.
void DocumentListModel::update()
{
    const QList<ImportedDocument> now = m_library ? m_library->documents() : QList<ImportedDocument>();
    const qsizetype common = std::min(m_documents.size(), now.size());
    qsizetype head = 0;
    while (head < common && m_documents[head] == now[head])
        ++head;
    qsizetype tail = 0;
    while (tail < common - head && m_documents[m_documents.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;

    if (const qsizetype removed = m_documents.size() - head - tail; removed > 0) {
        beginRemoveRows({}, int(head), int(head + removed) - 1);
        m_documents.remove(head, removed);
        endRemoveRows();
    }
    if (const qsizetype inserted = now.size() - head - tail; inserted > 0) {
        beginInsertRows({}, int(head), int(head + inserted) - 1);
        m_documents = now;
        endInsertRows();
    }
}

} // namespace lumora
