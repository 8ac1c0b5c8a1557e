// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// One of the program's own SVG symbols in one colour, drawn at the resolution of the screen.
class IconItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Icon)
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged REQUIRED)
    Q_PROPERTY(qreal weight READ weight WRITE setWeight NOTIFY weightChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit IconItem(QQuickItem *parent = nullptr);

    const QUrl &source() const { return m_source; }
    /// A qrc address.
    void setSource(const QUrl &source);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    /// Width of the strokes, in parts of 24 of the symbol's size.
    qreal weight() const { return m_weight; }
    void setWeight(qreal weight);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void sourceChanged();
    void colorChanged();
    void weightChanged();

private:
    QUrl m_source;
    QColor m_color = Qt::black;
    qreal m_weight = 1.5; // as the symbols are drawn
};

} // namespace lumora
