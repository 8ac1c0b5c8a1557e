// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QLocale>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// Hours, minutes and seconds, without date and time zone, as the locale writes them: "3:04:05 PM", "15:04:05".
QString timeOfDay(const QTime &time, const QLocale &locale);

/// A moment's time of day in the user's locale.
class TimeOfDay : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QDateTime moment MEMBER m_moment NOTIFY momentChanged REQUIRED)
    Q_PROPERTY(QString text READ text NOTIFY momentChanged)

public:
    using QObject::QObject;

    QString text() const { return timeOfDay(m_moment.time(), QLocale()); }

Q_SIGNALS:
    void momentChanged();

private:
    QDateTime m_moment;
};

} // namespace lumora
