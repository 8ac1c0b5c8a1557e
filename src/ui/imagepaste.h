// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QImage>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// Attaches the image on the clipboard.
class ImagePaste : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumora::ChatStore *store MEMBER m_store REQUIRED)

public:
    using QObject::QObject;

    /// Attaches an image file, or a picture. False where there is neither, or there is text: programs often put a
    /// picture of the text beside it.
    Q_INVOKABLE bool paste() const;

private:
    void attach(const QImage &picture) const;

    ChatStore *m_store = nullptr;
};

} // namespace lumora
