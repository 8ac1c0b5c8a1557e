// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf/pdfwriter.h"

namespace lumora {

int PdfWriter::add(const QByteArray &object)
{
    m_objects.append(object);
    return int(m_objects.size());
}

int PdfWriter::addStream(const QByteArray &content, const QByteArray &entries)
{
    return add("<</Length " + QByteArray::number(content.size()) + entries + ">>\nstream\n" + content + "\nendstream");
}

QByteArray PdfWriter::bytes(const QByteArray &trailer) const
{
    const QByteArray count = QByteArray::number(m_objects.size() + 1);
    QByteArray file = "%PDF-1.7\n";
    QByteArray references = "xref\n0 " + count + "\n0000000000 65535 f \n";
    for (qsizetype i = 0; i < m_objects.size(); ++i) {
        references += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + m_objects[i] + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    return file + references + "trailer\n<</Size " + count + "/Root 1 0 R" + trailer + ">>\nstartxref\n" + start +
           "\n%%EOF\n";
}

QByteArray pdfLines(const QStringList &lines, int left, int bottom)
{
    QByteArray content = "BT /F 11 Tf 14 TL " + QByteArray::number(left) + ' ' + QByteArray::number(bottom) + " Td\n";
    for (const QString &line : lines)
        content += '<' + line.toLatin1().toHex() + "> Tj T*\n";
    return content + "ET\n";
}

QByteArray pdfWithPages(const QList<QByteArray> &contents, const QByteArray &font, const QByteArray &map)
{
    constexpr int firstContent = 5; // and after each content its page
    QByteArray pages;
    for (qsizetype i = 0; i < contents.size(); ++i)
        pages += QByteArray::number(firstContent + 1 + 2 * i) + " 0 R ";
    PdfWriter writer;
    writer.add("<</Type/Catalog/Pages 2 0 R>>");
    writer.add("<</Type/Pages/MediaBox[0 0 612 792]/Resources<</Font<</F 3 0 R>>>>/Count " +
               QByteArray::number(contents.size()) + "/Kids[" + pages + "]>>");
    writer.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding" + font + ">>");
    writer.addStream(map);
    for (const QByteArray &content : contents) {
        const QByteArray compressed = qCompress(content).mid(4); // after the length, which is Qt's own
        const int number = writer.addStream(compressed, "/Filter/FlateDecode");
        writer.add("<</Type/Page/Parent 2 0 R/Contents " + QByteArray::number(number) + " 0 R>>");
    }
    return writer.bytes();
}

} // namespace lumora
