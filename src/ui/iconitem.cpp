// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/iconitem.h"

#include <QFile>
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
    // The symbols are drawn in "currentColor", with strokes of one weight.
    QByteArray svg = readResource(m_source);
    svg.replace("currentColor", m_color.name(QColor::HexRgb).toLatin1());
    svg.replace("stroke-width=\"1.5\"", "stroke-width=\"" + QByteArray::number(m_weight) + '"');
    QSvgRenderer renderer;
    if (!svg.isEmpty() && renderer.load(svg))
        renderer.render(painter, boundingRect());
}

} // namespace lumora
