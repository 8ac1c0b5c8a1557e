// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace lumora::test {

/// The image as a JPEG file that says how to turn it: what a camera stores that was held in one of the eight ways. It
/// is shown as it was given. Wants no application.
QByteArray jpegOfCamera(const QImage &upright, int orientation);

/// Lines of text on a ground; an empty line parts paragraphs. Wants a QGuiApplication.
struct Writing
{
    QStringList lines;
    int pixelSize = 24;
    QColor ink = Qt::black;
    QColor ground = Qt::white;
};
QImage written(const Writing &writing);

/// Grey noise, the same at every call.
QImage noise(QSize size);

/// A code as its format's name has it (such as "QRCode", "EAN-13"), with a white border. bytes: its content, where each
/// byte stands for itself. Pixels to a module: as many as come nearest to the width.
QImage barcode(const QByteArray &format, const QByteArray &bytes, int width, int height);

/// Full of the corners of QR codes, each three of which could make one: the search takes hours.
QImage endlessCodes();

} // namespace lumora::test
