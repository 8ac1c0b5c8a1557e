// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// Which files can be attached as images or imported as documents.
class PickableFiles : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString imagePatterns READ imagePatterns CONSTANT)
    Q_PROPERTY(QString documentPatterns READ documentPatterns CONSTANT)

public:
    using QObject::QObject;

    /// As a file dialog wants them: "*.png *.PNG" and so on, in the cases that people write.
    static QString imagePatterns();
    static QString documentPatterns();

    /// The first local image file of what is dragged or pasted, by its name and first bytes. Empty where there is none.
    Q_INVOKABLE static QUrl imageAmong(const QList<QUrl> &locations);

    /// The local files that a document picker would offer.
    Q_INVOKABLE static QList<QUrl> documentsAmong(const QList<QUrl> &locations);
};

} // namespace lumora
