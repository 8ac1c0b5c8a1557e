// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QList>
#include <QString>

namespace lumora {

struct Barcode
{
    QString type;    ///< as people call it, such as "QR Code", "EAN-13"
    QString content; ///< line breaks as they are; bytes that are no text, and control characters, are spelt out

    bool operator==(const Barcode &) const = default;
};

/// All the codes of a picture, dark on light and light on dark, at any angle; one that occurs twice, once. gray:
/// Grayscale8. Any thread.
QList<Barcode> readBarcodes(const QImage &gray);

} // namespace lumora
