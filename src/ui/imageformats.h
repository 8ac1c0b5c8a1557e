// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// The image files that can be read here.
class ImageFormats : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString patterns READ patterns CONSTANT)

public:
    using QObject::QObject;

    /// As a file dialog wants them: "*.png *.PNG" and so on, in the cases that people write.
    static QString patterns();
};

} // namespace lumora
