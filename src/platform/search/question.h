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

/// A phrase, and how many documents hold it.
struct CountedPhrase
{
    QByteArray phrase;
    qint64 documents = 0;
};

/// What brings in the best of the documents that hold at least one of the phrases, of which there is one at least.
/// documents: how many there are, about; wanted: how many of the best.
Match matchFor(const QList<CountedPhrase> &phrases, qint64 documents, qint64 wanted);

} // namespace lumora
