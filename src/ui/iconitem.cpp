// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/iconitem.h"

#include <QCache>
#include <QFile>
#include <QImage>
#include <QLoggingCategory>
#include <QPainter>
#include <QSvgRenderer>

namespace lumora {

namespace {

QByteArray readResource(const QUrl &url)
{
    QFile file(u':' + url.path());
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no symbol %ls", qUtf16Printable(url.toString()));
        return {};
    }
    return file.readAll();
}

QImage drawSymbol(const QUrl &source, const QColor &color, qreal weight, const QSize &pixels)
{
    // The symbols are drawn in "currentColor", with strokes of one weight.
    QByteArray svg = readResource(source);
    svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    svg.replace("stroke-width=\"1.5\"", "stroke-width=\"" + QByteArray::number(weight) + '"');
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer;
    if (!svg.isEmpty() && renderer.load(svg)) {
        QPainter painter(&image);
        renderer.render(&painter);
    }
    return image;
}

/// Drawn once for all that show it: a list has the same few in each of its rows.
QImage symbolImage(const QUrl &source, const QColor &color, qreal weight, const QSize &pixels)
{
    static QCache<QString, QImage> drawn(200);
    const QString key = QStringLiteral("%1 %2 %3 %4").arg(source.path(), color.name()).arg(weight).arg(pixels.height());
    if (!drawn.contains(key))
        drawn.insert(key, new QImage(drawSymbol(source, color, weight, pixels)));
    return *drawn.object(key);
}

} // namespace

IconItem::IconItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void IconItem::setSource(const QUrl &source)
{
    if (m_source == source)
        return;
    m_source = source;
    update();
    Q_EMIT sourceChanged();
}

void IconItem::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void IconItem::setWeight(qreal weight)
{
    if (qFuzzyCompare(m_weight, weight))
        return;
    m_weight = weight;
    update();
    Q_EMIT weightChanged();
}

void IconItem::paint(QPainter *painter)
{
    const QSize pixels = painter->deviceTransform().mapRect(boundingRect()).size().toSize();
    painter->drawImage(boundingRect(), symbolImage(m_source, m_color, m_weight, pixels));
}

} // namespace lumora
