// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reader/recognizedtext.h"

#include <QStringList>

#include <algorithm>

namespace lumora {

namespace {

constexpr float sure = 75; // what a line of symbols must be

bool isWriting(const QString &text, float confidence, float leastConfidence)
{
    const auto letters = std::ranges::count_if(text, [](QChar character) { return character.isLetterOrNumber(); });
    const auto symbols = std::ranges::count_if(
        text, [](QChar character) { return !character.isLetterOrNumber() && !character.isSpace(); });
    const bool looksLikeWords = letters >= 2 && letters >= symbols;
    return confidence >= (looksLikeWords ? leastConfidence : std::max(leastConfidence, sure));
}

} // namespace

QString readableText(const QList<RecognizedLine> &lines, float leastConfidence)
{
    QString result;
    bool startsParagraph = false;
    for (const RecognizedLine &line : lines) {
        const QString text = line.text.trimmed();
        if (!text.isEmpty() && isWriting(text, line.confidence, leastConfidence)) {
            if (!result.isEmpty())
                result += startsParagraph ? QLatin1String("\n\n") : QLatin1String("\n");
            result += text;
            startsParagraph = false;
        }
        startsParagraph = startsParagraph || line.endsParagraph;
    }
    return result;
}

float certainCharacters(const QList<RecognizedLine> &lines)
{
    float sum = 0;
    for (const RecognizedLine &line : lines)
        sum += line.confidence / 100 *
               float(std::ranges::count_if(line.text, [](QChar character) { return character.isLetterOrNumber(); }));
    return sum;
}

float meanConfidence(const QList<RecognizedLine> &lines)
{
    float sum = 0;
    float length = 0;
    for (const RecognizedLine &line : lines) {
        sum += line.confidence * float(line.text.size());
        length += float(line.text.size());
    }
    return length > 0 ? sum / length : 0;
}

} // namespace lumora
