// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/markdown.h"

class QTextDocument;

namespace lumora {

/// A part of a document that holds these lines, as plain text: paragraphs with an empty line between them, lists with
/// their markers, the cells of a table with tabs between them. from, to: positions in the document.
QString selectedText(const QTextDocument &document, const QList<MarkdownLine> &lines, int from, int to);

} // namespace lumora
