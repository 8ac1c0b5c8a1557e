// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/imagepaste.h"

#include "ui/pickablefiles.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace lumora {

namespace {

constexpr int fastCompression = 90; // of 100, which is none

} // namespace

bool ImagePaste::paste() const
{
    const QMimeData *clipboard = QGuiApplication::clipboard()->mimeData();
    if (!clipboard)
        return false;
    if (const QUrl file = PickableFiles::imageAmong(clipboard->urls()); !file.isEmpty()) {
        m_store->attachImage(file);
        return true;
    }
    if (!clipboard->hasImage() || clipboard->hasText())
        return false;
    attach(clipboard->imageData().value<QImage>());
    return true;
}

void ImagePaste::attach(const QImage &picture) const
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (picture.save(&buffer, "PNG", fastCompression))
        m_store->attachPicture(png);
}

} // namespace lumora
