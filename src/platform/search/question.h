// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QStringView>

namespace lumora {

/// What is asked of the index: an expression of FTS5's query language, and how its hits are ranked.
struct Match
{
    QByteArray expression;
    QByteArray ranking; ///< a call of the function "relevance"
};

/// The words that say what the question is about, each as a phrase of FTS5's query language: distinct, in order, not
/// more than a question has. Without the stop words, unless there are no others. Empty where the text has no words.
QList<QByteArray> questionPhrases(QStringView question);

/// Documents that hold at least one of the phrases.
Match matchAny(const QList<QByteArray> &phrases);

/// Documents that hold at least one of the chosen phrases; the others only count for their rank.
Match matchAny(const QList<QByteArray> &chosen, const QList<QByteArray> &others);

} // namespace lumora
