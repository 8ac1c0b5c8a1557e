// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/startingweights.h"

#include "tokenizer/tokenizer.h"
#include "trainer/headparts.h"
#include "trainer/matrix.h"
#include "trainer/randomnumbers.h"
#include "trainer/startingembeddings.h"
#include "trainer/widthplan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

namespace lumora::training {

namespace {

// The sizes below fit together as docs/starting-weights.md derives it.
constexpr float addedShare = 0.03F; // of what the layers add at first, where nothing is set
constexpr float randomShare = 0.2F; // of the random weights that stay where something is set
constexpr float offsetSharpness = 1.3F;
constexpr float matchSharpness = 2.9F;
constexpr float beginningSharpness = 2.2F;
constexpr float againSharpness = 2.7F;
constexpr float nearbySharpness = 1.65F;
constexpr float nowhereSharpness = 1.5F;
constexpr float foundSharpness = 3.2F;
constexpr float commonSharpness = 5.7F;
constexpr float nothingSharpness = 1.6F;
constexpr float nearSharpness = 2.7F;
constexpr float answeredSize = 0.8F;
constexpr float valueSize = 0.5F;
constexpr float restoredSize = 0.079F;    // what a norm has to be undone with to give the embedding's size back
constexpr float restoredSizeLater = 0.1F; // the same behind the first layer, which fills the slots
constexpr float copiedSize = 0.2F;

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
    void setOffset(Matrix queries, int distance) const;
    void setCopyingHeads(int layer);
    void setBeginningHead(int layer);
    void setAgainHead(int layer);
    void setAskingHeads(int layer);
    void addMessageStart(Matrix keys, int row, float size);
    std::vector<float> codeOfMessageStart();
    ConstMatrix code() const;

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
    setAskingHeads(3);
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
            size *= addedShare;
        for (float &number : tensor.in(std::span(m_weights)))
            number = tensor.rows == 1 ? 1.0F : m_random.normal(size);
    }
}

/// A head of the first layer that attends to the token a distance before, and puts its content into a slot.
void Builder::setPreviousTokenHead(int index, int distance, int slot)
{
    const Matrix queries = head(0, "q", index);
    shrinkTo(randomShare, queries);
    setOffset(queries, distance);
    const Matrix output = outputOfHead(0, index);
    shrinkTo(randomShare, output);
    addIdentity(output, slot, 0, m_plan.slot, restoredSize / valueSize);
    if (index > 0)
        return; // the key head is shared
    const Matrix keys = head(0, "k", 0);
    shrinkTo(randomShare, keys);
    for (int pair = 0; pair < m_plan.fast; pair += 2)
        keys.row(pair)[m_plan.constant] = offsetSharpness;
    const Matrix values = head(0, "v", 0);
    shrinkTo(randomShare, values);
    addRows(values, 0, code().rowsFrom(0, m_plan.slot), valueSize);
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
void Builder::setOffset(Matrix queries, int distance) const
{
    for (int pair = 0; pair < m_plan.fast; pair += 2) {
        const double speed = std::pow(double{m_shape.ropeBase}, -double(pair) / m_shape.headSize);
        queries.row(pair)[m_plan.constant] = offsetSharpness * static_cast<float>(std::cos(speed * distance));
        queries.row(pair + 1)[m_plan.constant] = -offsetSharpness * static_cast<float>(std::sin(speed * distance));
    }
}

/// Heads that find where the token at hand stood before, and copy the content of the one behind it. The second wants
/// the one before it to be the same as well: in a text where a token stands several times, it decides which time is
/// meant.
void Builder::setCopyingHeads(int layer)
{
    const int ofToken = m_plan.slot * 5 / 8; // of the numbers to compare by; the others are for the token before
    const int ofPrevious = m_plan.slot - ofToken;
    const Matrix keys = head(layer, "k", 1);
    shrinkTo(randomShare, keys);
    addIdentity(keys, m_plan.fast, m_plan.previousSlot, ofToken, matchSharpness);
    addIdentity(keys, m_plan.fast + ofToken, m_plan.secondSlot, ofPrevious, matchSharpness);
    const ConstMatrix copied = m_embeddings.directions().rowsFrom(0, m_shape.headSize);
    const Matrix values = head(layer, "v", 1);
    shrinkTo(randomShare, values);
    addRows(values, 0, copied, valueSize);
    const int group = m_shape.heads / m_shape.keyHeads;
    for (int index = group; index < 2 * group; ++index) {
        const Matrix queries = head(layer, "q", index);
        shrinkTo(randomShare, queries);
        addRows(queries, m_plan.fast, code().rowsFrom(0, ofToken), matchSharpness);
        if (index > group)
            addIdentity(queries, m_plan.fast + ofToken, m_plan.previousSlot, ofPrevious, matchSharpness);
        const Matrix output = outputOfHead(layer, index);
        shrinkTo(randomShare, output);
        addTransposed(output, 0, copied, copiedSize / valueSize);
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
    const std::array<Turn, 4> turns = nearestFirst(m_shape.headSize);
    const Matrix keys = head(layer, "k", 0);
    const Matrix queries = head(layer, "q", 0);
    shrinkTo(randomShare, keys);
    shrinkTo(randomShare, queries);
    for (const Turn &turn : turns) {
        std::fill_n(keys.row(turn.pair), 2 * keys.columns, 0.0F);
        for (const Share &share : beginning)
            keys.row(turn.pair)[m_plan.column(share.mark)] = beginningSharpness * share.size;
        keys.row(turn.pair)[m_plan.constant] =
            -beginningSharpness * threshold * StartingEmbeddings::markSize / StartingEmbeddings::constantSize;
    }
    setTurns(queries, m_plan.constant, beginningSharpness, turns);
    const Matrix values = head(layer, "v", 0);
    shrinkTo(randomShare, values);
    addRows(values, 0, code().rowsFrom(0, m_plan.slot), valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrinkTo(randomShare, output);
    addIdentity(output, m_plan.beginningSlot, 0, m_plan.slot, restoredSizeLater / valueSize);
}

/// A head that finds the token at hand elsewhere, and puts into a slot how the sentence began in which it stands there.
/// What is nowhere else finds the beginning of a message.
void Builder::setAgainHead(int layer)
{
    const Matrix keys = head(layer, "k", 0);
    const Matrix queries = head(layer, "q", 0);
    shrinkTo(randomShare, keys);
    shrinkTo(randomShare, queries);
    const int matched = m_plan.slot - 2;
    addRows(keys, m_plan.fast, code().rowsFrom(0, matched), againSharpness);
    addRows(queries, m_plan.fast, code().rowsFrom(0, matched), againSharpness);
    const int nowhere = m_plan.fast + matched;
    addMessageStart(keys, nowhere, nowhereSharpness);
    queries.row(nowhere)[m_plan.constant] += nowhereSharpness;
    // The fastest pairs stand against each other where the distance is none, and agree in nothing farther away.
    for (int pair = 0; pair < m_shape.headSize * 9 / 32; pair += 2) {
        keys.row(pair)[m_plan.constant] += nearbySharpness;
        queries.row(pair)[m_plan.constant] -= nearbySharpness / 4;
    }
    const Matrix values = head(layer, "v", 0);
    shrinkTo(randomShare, values);
    addIdentity(values, 0, m_plan.beginningSlot, m_plan.slot, valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrinkTo(randomShare, output);
    addIdentity(output, m_plan.againSlot, 0, m_plan.slot, restoredSizeLater / valueSize);
}

/// Two heads that look from the end of a line for tokens that stand elsewhere, too, and write with what a sentence
/// began: the first looks nearby, at a question behind its text, and takes the sentence that the token was found in;
/// the second looks anywhere, at a text behind its question, and takes the sentence that the token stands in. From
/// elsewhere they look at the beginning of a message, which gives them nothing.
void Builder::setAskingHeads(int layer)
{
    const int found = m_plan.fast; // the numbers that they compare by, in the slow pairs
    const int anywhere = m_plan.fast + 2;
    const int nothing = m_plan.fast + 4;
    const std::array<Turn, 4> turns = nearestFirst(m_shape.headSize);
    const std::vector<float> nowhere = codeOfMessageStart();
    const Matrix keys = head(layer, "k", 0);
    shrinkTo(randomShare, keys);
    for (int i = 0; i < m_plan.slot; ++i)
        keys.row(found)[m_plan.againSlot + i] = -foundSharpness * nowhere[static_cast<std::size_t>(i)];
    for (const Mark common : {Mark::space, Mark::endOfClause, Mark::endOfLine})
        keys.row(found)[m_plan.column(common)] = -commonSharpness;
    for (const Turn &turn : turns)
        keys.row(turn.pair)[m_plan.constant] = nearSharpness;
    keys.row(anywhere)[m_plan.constant] = nearSharpness;
    addMessageStart(keys, nothing, nothingSharpness);

    const Matrix values = head(layer, "v", 0);
    shrinkTo(randomShare, values);
    addIdentityWithout(nowhere, values, 0, m_plan.againSlot, valueSize);
    addIdentityWithout(nowhere, values, m_plan.slot, m_plan.beginningSlot, valueSize);
    for (int index = 0; index < 2; ++index) {
        const Matrix queries = head(layer, "q", index);
        shrinkTo(randomShare, queries);
        queries.row(found)[m_plan.column(Mark::endOfLine)] = foundSharpness;
        queries.row(nothing)[m_plan.constant] = nothingSharpness;
        if (index == 0)
            setTurns(queries, m_plan.column(Mark::endOfLine), nearSharpness, turns);
        else
            queries.row(anywhere)[m_plan.column(Mark::endOfLine)] = 2 * nearSharpness;
        const Matrix output = outputOfHead(layer, index);
        shrinkTo(randomShare, output);
        addTransposed(output, index * m_plan.slot, code(), answeredSize / valueSize);
    }
}

/// Lets a number of the keys be large for the mark at the beginning of a message.
void Builder::addMessageStart(Matrix keys, int row, float size)
{
    const float *const content = matrix("token_embd.weight").row(Tokenizer::messageStart);
    for (int i = 0; i < m_plan.content; ++i)
        keys.row(row)[i] += size * content[i] / StartingEmbeddings::contentLength;
}

/// The directions that put content into a slot.
ConstMatrix Builder::code() const
{
    return m_embeddings.directions().rowsFrom(m_plan.content - m_plan.slot, m_plan.slot);
}

/// Of length one.
std::vector<float> Builder::codeOfMessageStart()
{
    const float *const content = matrix("token_embd.weight").row(Tokenizer::messageStart);
    const ConstMatrix rows = code();
    std::vector<float> numbers(static_cast<std::size_t>(m_plan.slot));
    float squares = 0;
    for (int row = 0; row < m_plan.slot; ++row) {
        for (int i = 0; i < m_plan.content; ++i)
            numbers[static_cast<std::size_t>(row)] += rows.row(row)[i] * content[i];
        squares += numbers[static_cast<std::size_t>(row)] * numbers[static_cast<std::size_t>(row)];
    }
    for (float &number : numbers)
        number /= std::sqrt(squares);
    return numbers;
}

} // namespace

std::vector<float> startingWeights(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed)
{
    return Builder(shape, texts, seed).build();
}

} // namespace lumora::training
