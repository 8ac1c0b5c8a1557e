// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// The response modes that the user can choose from. A mode's position is its value as a number.
class ReplyStyleChoices : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList labels READ labels CONSTANT)

public:
    using QObject::QObject;

    QStringList labels() const;
};

} // namespace lumora
