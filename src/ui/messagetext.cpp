// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/messagetext.h"

#include "ui/growingmarkdown.h"
#include "ui/selectedtext.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextCursor>
#include <QTextDocument>

namespace lumora {

namespace {

/// What is selected in an editor while its document changes. It would grow with a text that is added at its end.
class HeldSelection
{
public:
    HeldSelection(QQuickItem *editor, QTextDocument *document);
    void restore() const;

private:
    QQuickItem *m_editor;
    QTextCursor m_end; ///< null where nothing is selected
    bool m_isBackwards = false;
};

HeldSelection::HeldSelection(QQuickItem *editor, QTextDocument *document)
    : m_editor(editor)
{
    const int start = editor->property("selectionStart").toInt();
    const int end = editor->property("selectionEnd").toInt();
    if (start == end)
        return;
    m_isBackwards = editor->property("cursorPosition").toInt() == start;
    m_end = QTextCursor(document);
    m_end.setPosition(end);
    m_end.setKeepPositionOnInsert(true);
}

void HeldSelection::restore() const
{
    if (m_end.isNull())
        return;
    const int start = m_editor->property("selectionStart").toInt();
    const int end = m_end.position();
    if (start >= end || end == m_editor->property("selectionEnd").toInt())
        return;
    QMetaObject::invokeMethod(m_editor, "select", Q_ARG(int, m_isBackwards ? end : start),
                              Q_ARG(int, m_isBackwards ? start : end));
}

} // namespace

MessageText::MessageText(QObject *parent)
    : QObject(parent)
{
}

void MessageText::setDocument(QQuickTextDocument *document)
{
    if (m_document == document)
        return;
    m_document = document;
    m_writer.reset();
    if (m_document) {
        m_writer.emplace(m_document->textDocument());
        m_look.font = m_document->textDocument()->defaultFont();
        m_writer->setLook(m_look);
        write();
    }
    Q_EMIT documentChanged();
}

void MessageText::setText(const QString &text)
{
    if (m_text == text)
        return;
    const bool wasEmpty = isEmpty();
    m_text = text;
    write();
    Q_EMIT textChanged();
    if (isEmpty() != wasEmpty)
        Q_EMIT isEmptyChanged();
}

QString MessageText::plainText() const
{
    if (!m_writer)
        return {};
    const QTextDocument &document = *m_document->textDocument();
    return selectedText(document, m_writer->lines(), 0, document.characterCount());
}

void MessageText::setGrowing(bool isGrowing)
{
    if (m_isGrowing == isGrowing)
        return;
    m_isGrowing = isGrowing;
    write();
    Q_EMIT isGrowingChanged();
}

void MessageText::setLinkColor(const QColor &color)
{
    setColor(m_look.linkColor, color);
}

void MessageText::setCodeColor(const QColor &color)
{
    setColor(m_look.codeColor, color);
}

void MessageText::setQuoteColor(const QColor &color)
{
    setColor(m_look.quoteColor, color);
}

void MessageText::setColor(QColor &color, const QColor &to)
{
    if (color == to)
        return;
    color = to;
    if (m_writer) {
        m_writer->setLook(m_look);
        m_writer->rewrite();
    }
    Q_EMIT colorsChanged();
}

void MessageText::write()
{
    if (!m_writer)
        return;
    const HeldSelection selection(editor(), m_document->textDocument());
    m_isWriting = true;
    m_writer->write(m_isVerbatim ? readVerbatim(m_text) : readMarkdown(m_isGrowing ? withEndClosed(m_text) : m_text));
    m_isWriting = false;
    selection.restore();
    Q_EMIT written();
}

QQuickItem *MessageText::editor() const
{
    return qobject_cast<QQuickItem *>(parent());
}

void MessageText::placeDecorations(qreal width)
{
    if (m_writer && !m_isWriting && m_decoration)
        m_decorations.show(decorationsOf(*m_document->textDocument(), m_writer->lines(), width), *m_decoration,
                           editor());
}

QStringList MessageText::links() const
{
    QStringList links;
    const auto add = [&links](const QList<MarkdownSpan> &spans) {
        for (const MarkdownSpan &span : spans) {
            const QString link = span.link.toString(QUrl::FullyEncoded);
            if (!link.isEmpty() && !links.contains(link)) // several spans may make one link
                links.append(link);
        }
    };
    for (const MarkdownLine &line : m_writer ? m_writer->lines() : QList<MarkdownLine>()) {
        add(line.spans);
        for (const QList<MarkdownCell> &row : line.table) {
            for (const MarkdownCell &cell : row)
                add(cell.spans);
        }
    }
    return links;
}

void MessageText::copy(int from, int to) const
{
    if (m_writer && from < to)
        QGuiApplication::clipboard()->setText(selectedText(*m_document->textDocument(), m_writer->lines(), from, to));
}

} // namespace lumora
