// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// The image files that can be read here.
class ImageFormats : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList patterns READ patterns CONSTANT)

public:
    using QObject::QObject;

    /// Such as "*.png", in the cases that people write.
    static QStringList patterns();
};

} // namespace lumora
