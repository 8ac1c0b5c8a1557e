// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/textdecorations.h"

#include "ui/documentlines.h"

#include <QAbstractTextDocumentLayout>
#include <QQmlComponent>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <array>

namespace lumora {

namespace {

constexpr qreal hairline = 1;
constexpr qreal quoteBarWidth = 3;

/// Goes along the lines and collects what is behind them.
class DecorationFinder
{
public:
    DecorationFinder(const QTextDocument &document, qreal width)
        : m_layout(document.documentLayout())
        , m_width(width)
    {
    }

    void add(const MarkdownLine &line, const QTextBlock &block);
    QList<TextDecoration> decorations() const { return m_decorations; }

private:
    void addCode(const MarkdownLine &line, const QRectF &area);
    void addQuotes(const MarkdownLine &line, const QRectF &area, bool isRightToLeft);
    void addTable(const QTextBlock &block);
    QRectF areaOf(const MarkdownLine &line, const QTextBlock &block) const;
    static qreal indentOf(const MarkdownLine &line) { return std::min(line.depth, deepestIndent) * lineIndent; }

    const QAbstractTextDocumentLayout *m_layout;
    qreal m_width;
    QList<TextDecoration> m_decorations;
    std::array<qsizetype, deepestIndent> m_bars{}; ///< of the quotes that are open: 1 + position; 0 for none
};

void DecorationFinder::add(const MarkdownLine &line, const QTextBlock &block)
{
    const bool isDecorated =
        line.kind != MarkdownLine::Kind::text && line.kind != MarkdownLine::Kind::heading; // or may be
    if (!isDecorated && line.quotes == 0) {
        m_bars = {};
        return; // where it stands does not matter, and may not be known yet
    }
    const QRectF area = areaOf(line, block);
    addQuotes(line, area, block.textDirection() == Qt::RightToLeft);
    if (line.kind == MarkdownLine::Kind::code)
        addCode(line, area);
    else if (line.kind == MarkdownLine::Kind::rule)
        m_decorations.append({TextDecoration::Kind::line,
                              QRectF(indentOf(line), area.center().y(), m_width - indentOf(line), hairline)});
    else if (line.kind == MarkdownLine::Kind::table)
        addTable(block.next());
}

void DecorationFinder::addCode(const MarkdownLine &line, const QRectF &area)
{
    const bool isFirst = !line.continues;
    if (isFirst)
        m_decorations.append({TextDecoration::Kind::codeGround,
                              QRectF(indentOf(line), area.top() - codePadding, m_width - indentOf(line), 0)});
    const auto ground = std::find_if(m_decorations.rbegin(), m_decorations.rend(), [](const TextDecoration &each) {
        return each.kind == TextDecoration::Kind::codeGround;
    });
    ground->area.setBottom(area.bottom() + codePadding);
}

void DecorationFinder::addQuotes(const MarkdownLine &line, const QRectF &area, bool isRightToLeft)
{
    for (int level = 0; level < deepestIndent; ++level) {
        qsizetype &bar = m_bars[size_t(level)];
        if ((line.quotes & (1U << level)) == 0) {
            bar = 0;
            continue;
        }
        if (bar == 0) {
            const qreal inset = level * lineIndent + quoteBarWidth;
            const qreal x = isRightToLeft ? m_width - inset - quoteBarWidth : inset;
            m_decorations.append({TextDecoration::Kind::quoteBar, QRectF(x, area.top(), quoteBarWidth, 0)});
            bar = m_decorations.size();
        }
        m_decorations[bar - 1].area.setBottom(area.bottom());
    }
}

void DecorationFinder::addTable(const QTextBlock &block)
{
    const QTextTable *table = QTextCursor(block).currentTable();
    if (!table)
        return;
    qreal left = m_width;
    qreal right = 0;
    QList<qreal> bottoms;
    for (int row = 0; row < table->rows(); ++row) {
        qreal bottom = 0;
        for (int column = 0; column < table->columns(); ++column) {
            const QRectF cell = m_layout->blockBoundingRect(table->cellAt(row, column).firstCursorPosition().block());
            bottom = std::max(bottom, cell.bottom());
            left = std::min(left, cell.left());
            right = std::max(right, cell.right());
        }
        bottoms.append(bottom + tableCellPadding);
    }
    for (const qreal bottom : bottoms.first(bottoms.size() - 1))
        m_decorations.append({TextDecoration::Kind::line, QRectF(left, bottom, right - left, hairline)});
}

QRectF DecorationFinder::areaOf(const MarkdownLine &line, const QTextBlock &block) const
{
    if (line.kind == MarkdownLine::Kind::table)
        return m_layout->frameBoundingRect(QTextCursor(block.next()).currentFrame());
    return m_layout->blockBoundingRect(block);
}

QVariantMap propertiesOf(const TextDecoration &decoration)
{
    return {{QStringLiteral("area"), decoration.area},
            {QStringLiteral("isCode"), decoration.kind == TextDecoration::Kind::codeGround},
            {QStringLiteral("isQuote"), decoration.kind == TextDecoration::Kind::quoteBar}};
}

/// Null where the component cannot be loaded; that is a fault of the build, and has been logged.
QQuickItem *createItem(QQmlComponent &component, QQuickItem *parent, const QVariantMap &properties)
{
    auto *item =
        qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties, component.creationContext()));
    if (item) {
        item->setParent(parent);
        item->setParentItem(parent);
    }
    return item;
}

} // namespace

QList<TextDecoration> decorationsOf(const QTextDocument &document, const QList<MarkdownLine> &lines, qreal width)
{
    DecorationFinder finder(document, width);
    QTextBlock block = document.firstBlock();
    for (const MarkdownLine &line : lines) {
        finder.add(line, block);
        for (int count = blockCount(line); count > 0; --count)
            block = block.next();
    }
    return finder.decorations();
}

void DecorationItems::show(const QList<TextDecoration> &decorations, QQmlComponent &component, QQuickItem *text)
{
    for (; m_items.size() > decorations.size(); m_decorations.removeLast())
        delete m_items.takeLast();
    for (qsizetype row = 0; row < decorations.size(); ++row) {
        const bool isNew = row == m_items.size();
        if (isNew) {
            m_items.append(createItem(component, text, propertiesOf(decorations.at(row))));
            m_decorations.append(decorations.at(row));
        } else if (m_items.at(row) && m_decorations.at(row) != decorations.at(row)) {
            const QVariantMap properties = propertiesOf(decorations.at(row));
            for (auto property = properties.cbegin(); property != properties.cend(); ++property)
                m_items.at(row)->setProperty(qPrintable(property.key()), property.value());
            m_decorations[row] = decorations.at(row);
        }
    }
}

} // namespace lumora
