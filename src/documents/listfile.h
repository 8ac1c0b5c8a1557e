// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/importeddocument.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace lumora {

/// documents.json: a compact array of objects with the keys "id", "name", "filename" and "addedAt".
QByteArray encodeDocuments(const QList<ImportedDocument> &documents);

/// All or nothing: no value where any part of the bytes breaks the rules of the file.
std::optional<QList<ImportedDocument>> decodeDocuments(QByteArray bytes);

} // namespace lumora
