// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/startingembeddings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumora::training {

namespace {

constexpr float spareSize = 0.006F; // of what means nothing at first

// How much of a content is what; the squares add up to one.
constexpr float stemShare = 0.774F;
constexpr float ownShare = 0.5F;
constexpr float writingShare = 0.275F; // each of two: a space before the word, a capital

} // namespace

StartingEmbeddings::StartingEmbeddings(const WidthPlan &plan, std::span<const std::string> texts, RandomNumbers &random)
    : m_plan(plan)
    , m_texts(texts)
    , m_random(random)
{
    setDirections();
}

/// Random directions of the content that say nothing of how a token is written, and the two that do. These stand in
/// the middle, where both key heads of the copying have them, and the code is of the others.
void StartingEmbeddings::setDirections()
{
    const int others = m_plan.content - WidthPlan::writingColumns;
    const std::vector<float> numbers = m_random.orthogonalRows(others, others);
    const ConstMatrix random(numbers.data(), others, others);
    m_directions.assign(static_cast<std::size_t>(m_plan.content) * m_plan.content, 0.0F);
    const Matrix all(m_directions.data(), m_plan.content, m_plan.content);
    const int middle = m_plan.headSize - WidthPlan::writingColumns;
    for (int row = 0; row < WidthPlan::writingColumns; ++row)
        all.row(middle + row)[row] = 1;
    for (int row = 0; row < others; ++row)
        std::copy_n(random.row(row), others,
                    all.row(row < middle ? row : row + WidthPlan::writingColumns) + WidthPlan::writingColumns);
}

/// All embeddings are of one length, so that a norm leaves of each token's constant the same: heads that look for a
/// distance compare keys that are nothing but constants.
void StartingEmbeddings::set(Matrix embeddings)
{
    for (int token = 0; token < embeddings.rows; ++token) {
        const TokenWriting writing(m_texts[static_cast<std::size_t>(token)]);
        float *const row = embeddings.row(token);
        for (int i = m_plan.content; i < m_plan.constant; ++i)
            row[i] = m_random.normal(spareSize);
        row[m_plan.constant] = constantSize;
        setMarks(embeddings, token, writing);
        setContent({row, static_cast<std::size_t>(m_plan.content)}, writing);
        float squares = 0;
        for (int i = m_plan.column(Mark::endOfLine); i <= m_plan.column(Mark::spaceBefore); ++i)
            squares += row[i] * row[i];
        const float length = std::sqrt(contentLength * contentLength - squares);
        for (int i = 0; i < m_plan.content; ++i)
            row[i] *= length;
    }
}

/// A direction of length one, nearly the same for tokens that are one word but for a space or a capital.
void StartingEmbeddings::setContent(std::span<float> content, const TokenWriting &writing)
{
    const int others = m_plan.content - WidthPlan::writingColumns;
    const auto [known, isNew] = m_stems.try_emplace(writing.stem());
    if (isNew)
        known->second = m_random.orthogonalRows(1, others);
    const std::vector<float> own = m_random.orthogonalRows(1, others);
    float squares = 0;
    for (int i = 0; i < others; ++i) {
        float &number = content[WidthPlan::writingColumns + i];
        number = stemShare * known->second[i] + ownShare * own[i];
        squares += number * number;
    }
    const float left = std::sqrt((1 - WidthPlan::writingColumns * writingShare * writingShare) / squares);
    for (float &number : content)
        number *= left;
    content[0] = writing.hasSpace() ? writingShare : -writingShare;
    content[1] = writing.hasCapital() ? writingShare : -writingShare;
}

void StartingEmbeddings::setMarks(Matrix embeddings, int token, const TokenWriting &writing)
{
    const auto set = [&](Mark mark, bool isSet) {
        embeddings.row(token)[m_plan.column(mark)] = isSet ? markSize : 0.0F;
    };
    set(Mark::endOfLine, writing.endsLine());
    set(Mark::endOfClause, writing.endsClause());
    set(Mark::space, writing.isSpace());
    set(Mark::spaceBefore, writing.hasSpace() && !writing.isSpace());
}

} // namespace lumora::training
