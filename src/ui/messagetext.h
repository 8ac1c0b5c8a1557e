// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/documentwriter.h"
#include "ui/textdecorations.h"

#include <QColor>
#include <QObject>
#include <QQmlComponent>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace lumora {

/// Keeps the document of a text editor at the text of one message, read as Markdown or as it stands. It is a child of
/// the editor.
class MessageText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged REQUIRED)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)
    Q_PROPERTY(QString plainText READ plainText NOTIFY written)
    Q_PROPERTY(bool isVerbatim MEMBER m_isVerbatim NOTIFY isVerbatimChanged)
    Q_PROPERTY(bool isGrowing READ isGrowing WRITE setGrowing NOTIFY isGrowingChanged REQUIRED)
    Q_PROPERTY(QColor linkColor READ linkColor WRITE setLinkColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor codeColor READ codeColor WRITE setCodeColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor quoteColor READ quoteColor WRITE setQuoteColor NOTIFY colorsChanged)
    Q_PROPERTY(QQmlComponent *decoration MEMBER m_decoration NOTIFY decorationChanged)

public:
    explicit MessageText(QObject *parent = nullptr);

    /// Null until the owner of the document is complete, since it then writes it itself.
    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    const QString &text() const { return m_text; }
    void setText(const QString &text);
    bool isEmpty() const { return m_text.isEmpty(); }
    /// The text as one would write it without Markdown.
    QString plainText() const;
    /// Whether more of the text is to come, so that what is open at its end is shown as if it were closed.
    bool isGrowing() const { return m_isGrowing; }
    void setGrowing(bool isGrowing);
    QColor linkColor() const { return m_look.linkColor; }
    void setLinkColor(const QColor &color);
    /// The ground of code within a line.
    QColor codeColor() const { return m_look.codeColor; }
    void setCodeColor(const QColor &color);
    QColor quoteColor() const { return m_look.quoteColor; }
    void setQuoteColor(const QColor &color);

    /// Finds out where the decorations stand once the text has been laid out. width: of the text, in logical pixels.
    Q_INVOKABLE void placeDecorations(qreal width);

    /// Where its links lead, in their order.
    Q_INVOKABLE QStringList links() const;

    /// Puts a selection on the clipboard as one would write it without a mouse: plain text with its lists, quotes and
    /// tables. Positions are the document's.
    Q_INVOKABLE void copy(int from, int to) const;

Q_SIGNALS:
    void documentChanged();
    void textChanged();
    void isEmptyChanged();
    void isVerbatimChanged();
    void isGrowingChanged();
    void colorsChanged();
    void decorationChanged();
    /// After every change of the document.
    void written();

private:
    void setColor(QColor &color, const QColor &to);
    void write();
    QQuickItem *editor() const;

    QQuickTextDocument *m_document = nullptr;
    std::optional<DocumentWriter> m_writer;
    QString m_text;
    bool m_isVerbatim = false; ///< to be set before the document
    bool m_isGrowing = false;
    bool m_isWriting = false;
    TextLook m_look;
    QQmlComponent *m_decoration = nullptr; ///< what shows one of them, see DecorationItems
    DecorationItems m_decorations;
};

} // namespace lumora
