// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/inlinemarkdown.h"

#include <QColor>
#include <QObject>
#include <QQuickTextDocument>
#include <QTextCharFormat>
#include <QtQml/qqmlregistration.h>

class QTextCursor;

namespace lumora {

/// Keeps a text document at the text of one message, read as Markdown or as it stands. What two texts have in common at
/// the start stays as it is in the document, selection included, so that a reply that grows costs only its last lines.
class MessageText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged REQUIRED)
    Q_PROPERTY(bool isVerbatim MEMBER m_isVerbatim NOTIFY isVerbatimChanged)
    Q_PROPERTY(QColor linkColor READ linkColor WRITE setLinkColor NOTIFY linkColorChanged)
    Q_PROPERTY(QColor codeColor READ codeColor WRITE setCodeColor NOTIFY codeColorChanged)

public:
    explicit MessageText(QObject *parent = nullptr);

    /// Null until the owner of the document is complete, since it then writes it itself.
    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    const QString &text() const { return m_text; }
    void setText(const QString &text);
    QColor linkColor() const { return m_linkColor; }
    void setLinkColor(const QColor &color);
    /// The ground of code.
    QColor codeColor() const { return m_codeColor; }
    void setCodeColor(const QColor &color);

Q_SIGNALS:
    void documentChanged();
    void textChanged();
    void isVerbatimChanged();
    void linkColorChanged();
    void codeColorChanged();

private:
    void writeAnew();
    QList<MarkdownLine> read() const;
    void write(const QList<MarkdownLine> &lines);
    void writeLine(QTextCursor &cursor, const MarkdownLine &line, bool isFirst) const;
    QTextCharFormat format(const MarkdownLine &line, const MarkdownSpan &span) const;

    QQuickTextDocument *m_document = nullptr;
    QString m_text;
    bool m_isVerbatim = false; ///< to be set before the document
    QColor m_linkColor;
    QColor m_codeColor;
    bool m_isComplete = false;   ///< until then nothing is written, since more properties are to come
    QList<MarkdownLine> m_lines; ///< as they stand in the document
};

} // namespace lumora
