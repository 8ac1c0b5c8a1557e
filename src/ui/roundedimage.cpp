// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/roundedimage.h"

#include "platform/images/imagefile.h"

#include <QPainter>
#include <QQuickWindow>
#include <QtConcurrentRun>

namespace lumora {

namespace {

/// Null where it cannot be read. pixels: the size on the screen.
QImage readPixels(const QString &path, const QSize &pixels)
{
    const std::optional<QImage> image = readImage(path, pixels);
    return image ? image->scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : QImage();
}

} // namespace

RoundedImage::RoundedImage(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(&m_reading, &QFutureWatcherBase::finished, this, [this] {
        if (m_reading.future().resultCount() == 0)
            return; // the path was taken away meanwhile
        m_image = m_reading.result();
        setUnavailable(m_image.isNull());
        update();
    });
}

void RoundedImage::setPath(const QString &path)
{
    if (m_path == path)
        return;
    m_path = path;
    load();
    Q_EMIT pathChanged();
}

void RoundedImage::setBox(const QSizeF &box)
{
    if (m_box == box)
        return;
    m_box = box;
    load();
    Q_EMIT boxChanged();
}

void RoundedImage::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    update();
    Q_EMIT radiusChanged();
}

void RoundedImage::paint(QPainter *painter)
{
    if (m_image.isNull())
        return;
    const QRectF area = boundingRect();
    QBrush brush(m_image);
    brush.setTransform(QTransform::fromScale(area.width() / m_image.width(), area.height() / m_image.height()));
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRoundedRect(area, m_radius, m_radius);
}

void RoundedImage::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    load();
}

void RoundedImage::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickPaintedItem::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        load();
}

void RoundedImage::load()
{
    if (!isComponentComplete())
        return;
    const QSizeF size = m_path.isEmpty() ? QSizeF() : imageSize(m_path);
    if (size.isEmpty()) {
        m_reading.setFuture({});
        m_image = {};
        setImplicitSize(0, 0);
        setUnavailable(true);
        return;
    }
    const QSizeF shown = size.scaled(m_box, Qt::KeepAspectRatio);
    setImplicitSize(shown.width(), shown.height());
    setUnavailable(false);
    const qreal scale = window() ? window()->effectiveDevicePixelRatio() : 1;
    m_reading.setFuture(QtConcurrent::run(readPixels, m_path, (shown * scale).toSize().expandedTo({1, 1})));
}

void RoundedImage::setUnavailable(bool isUnavailable)
{
    if (m_isUnavailable == isUnavailable)
        return;
    m_isUnavailable = isUnavailable;
    Q_EMIT isUnavailableChanged();
}

} // namespace lumora
