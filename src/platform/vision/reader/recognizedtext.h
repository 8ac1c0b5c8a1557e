// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace lumora {

/// A line of text as it was recognised.
struct RecognizedLine
{
    QString text;
    float confidence = 0; ///< 0 to 100
    bool endsParagraph = false;
    QRect box; ///< in the picture that was recognised
};

/// The lines as one text, with an empty line between paragraphs. Left out are lines that are more likely specks, rules
/// or textures than writing. Trimmed; empty where nothing is left. leastConfidence: of a line that looks like words.
QString readableText(const QList<RecognizedLine> &lines, float leastConfidence);

/// Of all lines, by their length; 0 without lines.
float meanConfidence(const QList<RecognizedLine> &lines);

/// How many letters and digits they hold, each as far as it is certain.
float certainCharacters(const QList<RecognizedLine> &lines);

} // namespace lumora
