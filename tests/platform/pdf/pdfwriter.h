// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace lumora {

/// Makes a PDF file object by object. Objects are numbered from 1 in the order in which they are added; the first one
/// is the catalog.
class PdfWriter
{
public:
    /// The object as it stands in the file, such as "<</Type/Catalog/Pages 2 0 R>>". Returns its number.
    int add(const QByteArray &object);
    /// entries: of the stream's dictionary, beside its length.
    int addStream(const QByteArray &content, const QByteArray &entries = {});
    /// The whole file. trailer: further entries of its trailer.
    QByteArray bytes(const QByteArray &trailer = {}) const;

private:
    QList<QByteArray> m_objects;
};

/// A page's content: lines of Latin-1 text below each other, the first one this far from the left and from the bottom
/// of a page of 612 by 792 points.
QByteArray pdfLines(const QStringList &lines, int left = 72, int bottom = 720);

/// A file with a page for each of these contents, which are compressed, in Helvetica. font: further entries of the
/// font; in them, object 4 is a stream that holds this map.
QByteArray pdfWithPages(const QList<QByteArray> &contents, const QByteArray &font = {}, const QByteArray &map = {});

} // namespace lumora
