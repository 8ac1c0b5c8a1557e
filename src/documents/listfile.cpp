// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/listfile.h"

#include "platform/files/jsondocument.h"
#include "platform/files/jsonwriter.h"

namespace lumora {

namespace {

ImportedDocument decodeDocument(JsonValue object)
{
    ImportedDocument document;
    document.id = object.member("id").identifier();
    document.name = object.member("name").text();
    document.filename = object.member("filename").text();
    document.addedAt = {object.member("addedAt").number()};
    return document;
}

} // namespace

QByteArray encodeDocuments(const QList<ImportedDocument> &documents)
{
    QByteArray bytes;
    JsonWriter json([&bytes](QByteArrayView piece) { bytes.append(piece); });
    json.startArray();
    for (const ImportedDocument &document : documents) {
        json.startObject();
        json.key("id");
        json.identifier(document.id);
        json.key("name");
        json.text(document.name);
        json.key("filename");
        json.text(document.filename);
        json.key("addedAt");
        json.number(document.addedAt.secondsSinceReference);
        json.endObject();
    }
    json.endArray();
    json.finish();
    return bytes;
}

std::optional<QList<ImportedDocument>> decodeDocuments(QByteArray bytes)
{
    try {
        const JsonDocument json(std::move(bytes));
        const JsonValue list = json.root();
        QList<ImportedDocument> documents;
        for (qsizetype i = 0; i < list.size(); ++i)
            documents.append(decodeDocument(list.at(i)));
        return documents;
    } catch (const JsonError &) {
        return std::nullopt;
    }
}

} // namespace lumora
