// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/startingweights.h"

#include "trainer/matrix.h"
#include "trainer/randomnumbers.h"
#include "trainer/startingembeddings.h"
#include "trainer/widthplan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace lumora::training {

namespace {

// The sizes below fit together as docs/starting-weights.md derives it.
constexpr float randomShare = 0.2F; // of the random weights that stay where something is set
constexpr float offsetSharpness = 1.3F;
constexpr float matchSharpness = 2.0F;
constexpr float pairSharpness = 2.4F; // a pair of tokens is matched with half as many numbers for each
constexpr float beginningSharpness = 2.2F;
constexpr float againSharpness = 2.7F;
constexpr float nearbySharpness = 1.65F;
constexpr float nowhereSharpness = 1.5F;
constexpr float valueSize = 0.5F;
constexpr float restoredSize = 0.079F;    // what a norm has to be undone with to give the embedding's size back
constexpr float restoredSizeLater = 0.1F; // the same behind the first layer, which fills the slots
constexpr float copiedSize = 0.2F;

enum class Match {
    token,
    pair,
};

void shrink(Matrix numbers)
{
    for (int row = 0; row < numbers.rows; ++row)
        for (int i = 0; i < numbers.columns; ++i)
            numbers.row(row)[i] *= randomShare;
}

class Builder
{
public:
    Builder(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed);

    std::vector<float> build();

private:
    Matrix matrix(const std::string &name);
    Matrix head(int layer, const std::string &which, int index);
    Matrix outputOfHead(int layer, int index);

    void fillRandomly();
    void setPreviousTokenHead(int index, int distance, int slot);
    void setPassedMarks();
    void setOffset(Matrix queries, int distance);
    void setCopyingHeads(int layer);
    void setBeginningHead(int layer);
    void setAgainHead(int layer);
    void setMatchingKeys(Matrix keys, Match match);
    void setMatchingQueries(Matrix queries, Match match);
    void setCopiedValues(Matrix values, ConstMatrix directions) const;
    void setCopyingOutput(Matrix output, ConstMatrix directions) const;
    static void addIdentity(Matrix rows, int firstRow, int firstColumn, int count, float size);
    void addContentCode(Matrix rows, int firstRow, int count, float size) const;

    Shape m_shape;
    WeightLayout m_layout;
    WidthPlan m_plan;
    RandomNumbers m_random;
    StartingEmbeddings m_embeddings;
    std::vector<float> m_weights;
};

Builder::Builder(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed)
    : m_shape(shape)
    , m_layout(shape)
    , m_plan(shape)
    , m_random(seed)
    , m_embeddings(m_plan, texts, m_random)
    , m_weights(m_layout.size())
{
    if (std::cmp_not_equal(texts.size(), shape.vocabulary))
        throw std::invalid_argument("there are not as many texts as tokens");
}

std::vector<float> Builder::build()
{
    fillRandomly();
    m_embeddings.set(matrix("token_embd.weight"));
    setPreviousTokenHead(0, 1, m_plan.previousSlot);
    setPreviousTokenHead(1, 2, m_plan.secondSlot);
    setPassedMarks();
    setBeginningHead(1);
    setAgainHead(2);
    setCopyingHeads(3);
    return m_weights;
}

Matrix Builder::matrix(const std::string &name)
{
    const Tensor &tensor = m_layout.tensor(name);
    return {tensor.in(std::span(m_weights)).data(), tensor.rows, tensor.columns};
}

Matrix Builder::head(int layer, const std::string &which, int index)
{
    return matrix("blk." + std::to_string(layer) + ".attn_" + which + ".weight")
        .rowsFrom(index * m_shape.headSize, m_shape.headSize);
}

Matrix Builder::outputOfHead(int layer, int index)
{
    return matrix("blk." + std::to_string(layer) + ".attn_output.weight")
        .columnsFrom(index * m_shape.headSize, m_shape.headSize);
}

/// Products keep about half the size of what they get, and all layers together add about as much as they get.
void Builder::fillRandomly()
{
    for (const Tensor &tensor : m_layout.tensors()) {
        const bool addsToTheWidth =
            tensor.name.ends_with("attn_output.weight") || tensor.name.ends_with("ffn_down.weight");
        float size = 0.5F / std::sqrt(static_cast<float>(tensor.columns));
        if (addsToTheWidth)
            size /= std::sqrt(2.0F * static_cast<float>(m_shape.layers));
        for (float &number : tensor.in(std::span(m_weights)))
            number = tensor.rows == 1 ? 1.0F : m_random.normal(size);
    }
}

/// A head of the first layer that attends to the token a distance before, and puts its content into a slot.
void Builder::setPreviousTokenHead(int index, int distance, int slot)
{
    const Matrix queries = head(0, "q", index);
    shrink(queries);
    setOffset(queries, distance);
    const Matrix output = outputOfHead(0, index);
    shrink(output);
    addIdentity(output, slot, 0, m_plan.slot, restoredSize / valueSize);
    if (index > 0)
        return; // the key head is shared
    const Matrix keys = head(0, "k", 0);
    shrink(keys);
    for (int pair = 0; pair < m_plan.fast; pair += 2)
        keys.row(pair)[m_plan.constant] = offsetSharpness;
    const Matrix values = head(0, "v", 0);
    shrink(values);
    addContentCode(values, 0, m_plan.slot, valueSize);
}

/// The heads that know the tokens before also pass on their marks.
void Builder::setPassedMarks()
{
    struct Passed
    {
        Mark mark;
        int head;
        Mark to;
    };
    constexpr std::array<Passed, 4> all{{{Mark::endOfLine, 0, Mark::afterLine},
                                         {Mark::endOfClause, 0, Mark::afterClause},
                                         {Mark::space, 0, Mark::afterSpace},
                                         {Mark::endOfClause, 1, Mark::twoAfterClause}}};
    const Matrix values = head(0, "v", 0);
    for (const char *const writer : {"blk.0.attn_output.weight", "blk.0.ffn_down.weight"}) {
        const Matrix rows = matrix(writer).rowsFrom(m_plan.column(Mark::endOfLine), WidthPlan::markColumns);
        std::fill_n(rows.row(0), rows.rows * rows.columns, 0.0F); // nobody else writes into the marks
    }
    for (const Passed &passed : all) {
        const int row = m_plan.slot + static_cast<int>(passed.mark);
        std::fill_n(values.row(row), values.columns, 0.0F);
        values.row(row)[m_plan.column(passed.mark)] = valueSize;
        outputOfHead(0, passed.head).row(m_plan.column(passed.to))[row] = restoredSize / valueSize;
    }
}

/// Queries that are turned back against the keys by what a distance turns them, and so fit them best there.
void Builder::setOffset(Matrix queries, int distance)
{
    for (int pair = 0; pair < m_plan.fast; pair += 2) {
        const double speed = std::pow(double{m_shape.ropeBase}, -double(pair) / m_shape.headSize);
        queries.row(pair)[m_plan.constant] = offsetSharpness * static_cast<float>(std::cos(speed * distance));
        queries.row(pair + 1)[m_plan.constant] = -offsetSharpness * static_cast<float>(std::sin(speed * distance));
    }
}

/// Heads that find an earlier place and copy the content of the token there: those of the first key head where the
/// token at hand was the one before, those of the second where the last two tokens were the two before.
void Builder::setCopyingHeads(int layer)
{
    const int group = m_shape.heads / m_shape.keyHeads;
    for (int keyHead = 0; keyHead < 2; ++keyHead) {
        const Match match = keyHead == 0 ? Match::token : Match::pair;
        setMatchingKeys(head(layer, "k", keyHead), match);
        const int first = match == Match::token ? 0 : m_plan.content - m_shape.headSize;
        const ConstMatrix copied = m_embeddings.directions().rowsFrom(first, m_shape.headSize);
        setCopiedValues(head(layer, "v", keyHead), copied);
        for (int index = keyHead * group; index < (keyHead + 1) * group; ++index) {
            setMatchingQueries(head(layer, "q", index), match);
            setCopyingOutput(outputOfHead(layer, index), copied);
        }
    }
}

/// A head that finds where the sentence or the line at hand began, and puts the token there into a slot. Its keys are
/// made from the marks that say where something begins, and turn the less against the queries the nearer that is.
void Builder::setBeginningHead(int layer)
{
    struct Share
    {
        Mark mark;
        float size;
    };
    // A line begins behind the end of one, a sentence behind a full stop and a space.
    constexpr std::array<Share, 7> beginning{{{Mark::afterLine, 1.0F},
                                              {Mark::endOfLine, -1.0F},
                                              {Mark::afterClause, 0.7F},
                                              {Mark::spaceBefore, 0.4F},
                                              {Mark::space, -0.7F},
                                              {Mark::twoAfterClause, 0.6F},
                                              {Mark::afterSpace, 0.5F}}};
    constexpr float threshold = 0.3F; // so that half of what makes a beginning counts for less than half
    struct Turn
    {
        int pair;
        float size;
        float angle; // by which the query is ahead
    };
    // Three that tell near from nearer, and a slower one that tells beginnings from what is none.
    const int fastest = m_shape.headSize / 4;
    const std::array<Turn, 4> turns{
        {{fastest, 1.0F, 0.8F}, {fastest + 2, 1.0F, 0.8F}, {fastest + 4, 1.0F, 0.8F}, {fastest + 8, 2.0F, 0.0F}}};
    const Matrix keys = head(layer, "k", 0);
    const Matrix queries = head(layer, "q", 0);
    shrink(keys);
    shrink(queries);
    for (const Turn &turn : turns) {
        std::fill_n(keys.row(turn.pair), 2 * keys.columns, 0.0F);
        for (const Share &share : beginning)
            keys.row(turn.pair)[m_plan.column(share.mark)] = beginningSharpness * share.size;
        keys.row(turn.pair)[m_plan.constant] =
            -beginningSharpness * threshold * StartingEmbeddings::markSize / StartingEmbeddings::constantSize;
        queries.row(turn.pair)[m_plan.constant] = beginningSharpness * turn.size * std::cos(turn.angle);
        queries.row(turn.pair + 1)[m_plan.constant] = beginningSharpness * turn.size * std::sin(turn.angle);
    }
    const Matrix values = head(layer, "v", 0);
    shrink(values);
    addContentCode(values, 0, m_plan.slot, valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrink(output);
    addIdentity(output, m_plan.beginningSlot, 0, m_plan.slot, restoredSizeLater / valueSize);
}

/// A head that finds the token at hand elsewhere, and puts into a slot how the sentence began in which it stands there.
/// What is nowhere else finds the beginning of a message.
void Builder::setAgainHead(int layer)
{
    const Matrix keys = head(layer, "k", 0);
    const Matrix queries = head(layer, "q", 0);
    shrink(keys);
    shrink(queries);
    const int matched = m_plan.slot - 2;
    addContentCode(keys, m_plan.fast, matched, againSharpness);
    addContentCode(queries, m_plan.fast, matched, againSharpness);
    const int nowhere = m_plan.fast + matched;
    const float *const mark = matrix("token_embd.weight").row(0);
    for (int i = 0; i < m_plan.content; ++i)
        keys.row(nowhere)[i] += nowhereSharpness * mark[i] / StartingEmbeddings::contentLength;
    queries.row(nowhere)[m_plan.constant] += nowhereSharpness;
    // The fastest pairs stand against each other where the distance is none, and agree in nothing farther away.
    for (int pair = 0; pair < m_shape.headSize * 9 / 32; pair += 2) {
        keys.row(pair)[m_plan.constant] += nearbySharpness;
        queries.row(pair)[m_plan.constant] -= nearbySharpness / 4;
    }
    const Matrix values = head(layer, "v", 0);
    shrink(values);
    addIdentity(values, 0, m_plan.beginningSlot, m_plan.slot, valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrink(output);
    addIdentity(output, m_plan.againSlot, 0, m_plan.slot, restoredSizeLater / valueSize);
}

void Builder::setMatchingKeys(Matrix keys, Match match)
{
    shrink(keys);
    if (match == Match::token) {
        addIdentity(keys, m_plan.fast, m_plan.previousSlot, m_plan.slot, matchSharpness);
        return;
    }
    const int half = m_plan.slot / 2;
    addIdentity(keys, m_plan.fast, m_plan.previousSlot, half, pairSharpness);
    addIdentity(keys, m_plan.fast + half, m_plan.secondSlot, half, pairSharpness);
}

void Builder::setMatchingQueries(Matrix queries, Match match)
{
    shrink(queries);
    if (match == Match::token) {
        addContentCode(queries, m_plan.fast, m_plan.slot, matchSharpness);
        return;
    }
    const int half = m_plan.slot / 2;
    addContentCode(queries, m_plan.fast, half, pairSharpness);
    addIdentity(queries, m_plan.fast + half, m_plan.previousSlot, half, pairSharpness);
}

void Builder::setCopiedValues(Matrix values, ConstMatrix directions) const
{
    shrink(values);
    for (int row = 0; row < directions.rows; ++row)
        for (int i = 0; i < m_plan.content; ++i)
            values.row(row)[i] += directions.row(row)[i] * valueSize;
}

void Builder::setCopyingOutput(Matrix output, ConstMatrix directions) const
{
    shrink(output);
    for (int row = 0; row < directions.rows; ++row)
        for (int i = 0; i < m_plan.content; ++i)
            output.row(i)[row] += directions.row(row)[i] * copiedSize / valueSize;
}

void Builder::addIdentity(Matrix rows, int firstRow, int firstColumn, int count, float size)
{
    for (int i = 0; i < count; ++i)
        rows.row(firstRow + i)[firstColumn + i] += size;
}

/// The first rows of the code, which make numbers of a slot of the content.
void Builder::addContentCode(Matrix rows, int firstRow, int count, float size) const
{
    const ConstMatrix code = m_embeddings.directions().rowsFrom(m_plan.content - m_plan.slot, m_plan.slot);
    for (int row = 0; row < count; ++row)
        for (int i = 0; i < m_plan.content; ++i)
            rows.row(firstRow + row)[i] += code.row(row)[i] * size;
}

} // namespace

std::vector<float> startingWeights(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed)
{
    return Builder(shape, texts, seed).build();
}

} // namespace lumora::training
