// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/markdown.h"

#include <QPointer>
#include <QQuickItem>
#include <QRectF>

class QQmlComponent;
class QTextDocument;

namespace lumora {

/// Something that is drawn behind a text, in the text's coordinates.
struct TextDecoration
{
    enum class Kind {
        codeGround,
        quoteBar,
        line,
    };

    Kind kind = Kind::codeGround;
    QRectF area;

    bool operator==(const TextDecoration &) const = default;
};

/// The decorations of a document that holds these lines. width: of the text, in logical pixels.
QList<TextDecoration> decorationsOf(const QTextDocument &document, const QList<MarkdownLine> &lines, qreal width);

/// The items that show a text's decorations, behind it. They belong to the item of the text.
class DecorationItems
{
public:
    /// component: of an item with the properties area (a rectangle), isCode and isQuote. Items are made where there are
    /// more decorations than before, and unmade where there are fewer.
    void show(const QList<TextDecoration> &decorations, QQmlComponent &component, QQuickItem *text);

private:
    QList<TextDecoration> m_decorations;
    QList<QPointer<QQuickItem>> m_items;
};

} // namespace lumora
