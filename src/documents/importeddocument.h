// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/timepoint.h"

#include <QObject>
#include <QString>
#include <QUuid>

namespace lumora {

/// A document that the user has imported.
struct ImportedDocument
{
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)

public:
    QUuid id = QUuid::createUuid(); ///< also its identifier in the search index
    QString name;                   ///< the picked file's name, unchanged
    QString filename;               ///< the stored copy's name inside the documents folder
    TimePoint addedAt = TimePoint::now();

    bool operator==(const ImportedDocument &) const = default;
};

} // namespace lumora
