// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QQuickPaintedItem>
#include <QSizeF>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// An image file with rounded corners; its implicit size is the largest that fits into a box. The pixels are read on a
/// worker thread whenever the path is set; nothing is cached.
class RoundedImage : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged REQUIRED)
    Q_PROPERTY(QSizeF box READ box WRITE setBox NOTIFY boxChanged REQUIRED)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool isUnavailable READ isUnavailable NOTIFY isUnavailableChanged)

public:
    explicit RoundedImage(QQuickItem *parent = nullptr);

    const QString &path() const { return m_path; }
    /// An absolute path.
    void setPath(const QString &path);
    QSizeF box() const { return m_box; }
    void setBox(const QSizeF &box);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    /// Whether the file is missing, unreadable or no image.
    bool isUnavailable() const { return m_isUnavailable; }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void pathChanged();
    void boxChanged();
    void radiusChanged();
    void isUnavailableChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void load();
    void setUnavailable(bool isUnavailable);

    QString m_path;
    QSizeF m_box;
    qreal m_radius = 0;
    bool m_isUnavailable = false;
    QImage m_image;
    QFutureWatcher<QImage> m_reading;
};

} // namespace lumora
