// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/startingweights.h"

#include "trainer/matrix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <random>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace lumora::training {

namespace {

// The sizes below fit together as docs/starting-weights.md derives it.
constexpr float contentLength = 1.04F; // of what tells a token from the others
constexpr float constantSize = 0.6F;   // of the number that all tokens have in common
constexpr float markSize = 0.3F;
constexpr float spareSize = 0.006F; // of what means nothing at first
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

// How much of a content is what; the squares add up to one.
constexpr float stemShare = 0.774F;
constexpr float ownShare = 0.5F;
constexpr float writingShare = 0.275F; // each of two: a space before the word, a capital

constexpr int writingColumns = 2;
constexpr int slots = 4;
constexpr int markColumns = 8;
constexpr int spareColumns = 3;

/// Columns of marks. The first four are of the token itself, the others of those before it.
enum class Mark {
    endOfLine,
    endOfClause,
    space,       ///< a space and nothing else
    spaceBefore, ///< and something behind it
    afterLine,
    afterClause,
    afterSpace,
    twoAfterClause,
};

enum class Match {
    token,
    pair,
};

/// How a token is written, which decides where sentences begin and which tokens are nearly the same.
class Writing
{
public:
    explicit Writing(std::string_view text)
        : m_text(text)
    {
    }

    bool endsLine() const { return m_text.ends_with("\u010A") || m_text.starts_with("<|"); }
    bool endsClause() const { return !endsLine() && m_text.find_first_of(".!?") != std::string_view::npos; }
    bool hasSpace() const { return m_text.starts_with(space); }
    bool isSpace() const { return m_text == space; }
    bool hasCapital() const { return !stem().empty() && isCapital(word().front()); }

    /// What it has in common with tokens that are written with or without a space or a capital.
    std::string stem() const
    {
        std::string small(word());
        std::ranges::transform(small, small.begin(), [](char letter) {
            return isCapital(letter) ? static_cast<char>(letter - 'A' + 'a') : letter;
        });
        return small;
    }

private:
    static constexpr std::string_view space = "\u0120"; // as the texts of a vocabulary write it

    static bool isCapital(char letter) { return letter >= 'A' && letter <= 'Z'; }
    std::string_view word() const { return hasSpace() && !isSpace() ? m_text.substr(space.size()) : m_text; }

    std::string_view m_text;
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
    std::vector<float> orthogonalRows(int rows, int columns);
    void setDirections();
    float normal(float size) { return size * m_normal(m_random); }
    int constantColumn() const { return m_shape.width - 1; }
    int previousSlot() const { return m_content; }
    int secondSlot() const { return m_content + m_slot; }
    int beginningSlot() const { return m_content + 2 * m_slot; }
    int againSlot() const { return m_content + 3 * m_slot; }
    int markColumn(Mark mark) const { return m_content + slots * m_slot + static_cast<int>(mark); }
    ConstMatrix directions(int first, int count) const;

    void fillRandomly();
    void setEmbeddings();
    void setContent(std::span<float> content, const Writing &writing);
    void setMarks(Matrix embeddings, int token, const Writing &writing);
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
    std::span<const std::string> m_texts;
    std::mt19937 m_random;
    std::normal_distribution<float> m_normal;
    std::vector<float> m_weights;
    int m_fast;                      // the first of a head's numbers that turn so slowly that distance hardly matters
    int m_slot;                      // columns of a slot, as many as there are slow numbers
    int m_content;                   // columns of the content, of which the first say how the token is written
    std::vector<float> m_directions; // content × content; the last rows are the code that puts content into a slot
    std::map<std::string, std::vector<float>> m_stems;
};

Builder::Builder(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed)
    : m_shape(shape)
    , m_layout(shape)
    , m_texts(texts)
    , m_random(seed)
    , m_weights(m_layout.size())
    , m_fast(shape.headSize / 4 * 2)
    , m_slot(shape.headSize - m_fast)
    , m_content(shape.width - 1 - slots * m_slot - markColumns - spareColumns)
{
    const bool hasGroups = shape.keyHeads >= 2 && shape.heads >= 2 * shape.keyHeads;
    if (!hasGroups || shape.layers < 4 || m_content < shape.headSize || m_slot % 2 != 0)
        throw std::invalid_argument("a decoder of this shape has no room for the starting weights");
    if (std::cmp_not_equal(texts.size(), shape.vocabulary))
        throw std::invalid_argument("there are not as many texts as tokens");
    setDirections();
}

std::vector<float> Builder::build()
{
    fillRandomly();
    setEmbeddings();
    setPreviousTokenHead(0, 1, previousSlot());
    setPreviousTokenHead(1, 2, secondSlot());
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

/// Random rows of length one, each orthogonal to the ones before (Gram and Schmidt).
std::vector<float> Builder::orthogonalRows(int rows, int columns)
{
    std::vector<float> numbers(static_cast<std::size_t>(rows) * columns);
    const Matrix all(numbers.data(), rows, columns);
    for (int row = 0; row < rows; ++row) {
        float *const made = all.row(row);
        for (int i = 0; i < columns; ++i)
            made[i] = normal(1.0F);
        for (int before = 0; before < row; ++before) {
            float common = 0;
            for (int i = 0; i < columns; ++i)
                common += made[i] * all.row(before)[i];
            for (int i = 0; i < columns; ++i)
                made[i] -= common * all.row(before)[i];
        }
        float squares = 0;
        for (int i = 0; i < columns; ++i)
            squares += made[i] * made[i];
        for (int i = 0; i < columns; ++i)
            made[i] /= std::sqrt(squares);
    }
    return numbers;
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
            number = tensor.rows == 1 ? 1.0F : normal(size);
    }
}

/// Random directions of the content that say nothing of how a token is written, and the two that do. These stand in
/// the middle, where both key heads of the copying have them, and the code is of the others.
void Builder::setDirections()
{
    const int others = m_content - writingColumns;
    const std::vector<float> numbers = orthogonalRows(others, others);
    const ConstMatrix random(numbers.data(), others, others);
    m_directions.assign(static_cast<std::size_t>(m_content) * m_content, 0.0F);
    const Matrix all(m_directions.data(), m_content, m_content);
    const int middle = m_shape.headSize - writingColumns;
    for (int row = 0; row < writingColumns; ++row)
        all.row(middle + row)[row] = 1;
    for (int row = 0; row < others; ++row)
        std::copy_n(random.row(row), others, all.row(row < middle ? row : row + writingColumns) + writingColumns);
}

ConstMatrix Builder::directions(int first, int count) const
{
    return ConstMatrix(m_directions.data(), m_content, m_content).rowsFrom(first, count);
}

/// All embeddings are of one length, so that a norm leaves of each token's constant the same: heads that look for a
/// distance compare keys that are nothing but constants.
void Builder::setEmbeddings()
{
    const Matrix embeddings = matrix("token_embd.weight");
    for (int token = 0; token < embeddings.rows; ++token) {
        const Writing writing(m_texts[static_cast<std::size_t>(token)]);
        float *const row = embeddings.row(token);
        for (int i = m_content; i < constantColumn(); ++i)
            row[i] = normal(spareSize);
        row[constantColumn()] = constantSize;
        setMarks(embeddings, token, writing);
        setContent({row, static_cast<std::size_t>(m_content)}, writing);
        float squares = 0;
        for (int i = markColumn(Mark::endOfLine); i <= markColumn(Mark::spaceBefore); ++i)
            squares += row[i] * row[i];
        const float length = std::sqrt(contentLength * contentLength - squares);
        for (int i = 0; i < m_content; ++i)
            row[i] *= length;
    }
}

/// A direction of length one, nearly the same for tokens that are one word but for a space or a capital.
void Builder::setContent(std::span<float> content, const Writing &writing)
{
    const int others = m_content - writingColumns;
    const auto [known, isNew] = m_stems.try_emplace(writing.stem());
    if (isNew)
        known->second = orthogonalRows(1, others);
    const std::vector<float> own = orthogonalRows(1, others);
    float squares = 0;
    for (int i = 0; i < others; ++i) {
        float &number = content[writingColumns + i];
        number = stemShare * known->second[i] + ownShare * own[i];
        squares += number * number;
    }
    const float left = std::sqrt((1 - writingColumns * writingShare * writingShare) / squares);
    for (float &number : content)
        number *= left;
    content[0] = writing.hasSpace() ? writingShare : -writingShare;
    content[1] = writing.hasCapital() ? writingShare : -writingShare;
}

void Builder::setMarks(Matrix embeddings, int token, const Writing &writing)
{
    const auto set = [&](Mark mark, bool isSet) { embeddings.row(token)[markColumn(mark)] = isSet ? markSize : 0.0F; };
    set(Mark::endOfLine, writing.endsLine());
    set(Mark::endOfClause, writing.endsClause());
    set(Mark::space, writing.isSpace());
    set(Mark::spaceBefore, writing.hasSpace() && !writing.isSpace());
}

/// A head of the first layer that attends to the token a distance before, and puts its content into a slot.
void Builder::setPreviousTokenHead(int index, int distance, int slot)
{
    const Matrix queries = head(0, "q", index);
    shrink(queries);
    setOffset(queries, distance);
    const Matrix output = outputOfHead(0, index);
    shrink(output);
    addIdentity(output, slot, 0, m_slot, restoredSize / valueSize);
    if (index > 0)
        return; // the key head is shared
    const Matrix keys = head(0, "k", 0);
    shrink(keys);
    for (int pair = 0; pair < m_fast; pair += 2)
        keys.row(pair)[constantColumn()] = offsetSharpness;
    const Matrix values = head(0, "v", 0);
    shrink(values);
    addContentCode(values, 0, m_slot, valueSize);
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
        const Matrix rows = matrix(writer).rowsFrom(markColumn(Mark::endOfLine), markColumns);
        std::fill_n(rows.row(0), rows.rows * rows.columns, 0.0F); // nobody else writes into the marks
    }
    for (const Passed &passed : all) {
        const int row = m_slot + static_cast<int>(passed.mark);
        std::fill_n(values.row(row), values.columns, 0.0F);
        values.row(row)[markColumn(passed.mark)] = valueSize;
        outputOfHead(0, passed.head).row(markColumn(passed.to))[row] = restoredSize / valueSize;
    }
}

/// Queries that are turned back against the keys by what a distance turns them, and so fit them best there.
void Builder::setOffset(Matrix queries, int distance)
{
    for (int pair = 0; pair < m_fast; pair += 2) {
        const double speed = std::pow(double{m_shape.ropeBase}, -double(pair) / m_shape.headSize);
        queries.row(pair)[constantColumn()] = offsetSharpness * static_cast<float>(std::cos(speed * distance));
        queries.row(pair + 1)[constantColumn()] = -offsetSharpness * static_cast<float>(std::sin(speed * distance));
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
        const int first = match == Match::token ? 0 : m_content - m_shape.headSize;
        const ConstMatrix copied = directions(first, m_shape.headSize);
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
            keys.row(turn.pair)[markColumn(share.mark)] = beginningSharpness * share.size;
        keys.row(turn.pair)[constantColumn()] = -beginningSharpness * threshold * markSize / constantSize;
        queries.row(turn.pair)[constantColumn()] = beginningSharpness * turn.size * std::cos(turn.angle);
        queries.row(turn.pair + 1)[constantColumn()] = beginningSharpness * turn.size * std::sin(turn.angle);
    }
    const Matrix values = head(layer, "v", 0);
    shrink(values);
    addContentCode(values, 0, m_slot, valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrink(output);
    addIdentity(output, beginningSlot(), 0, m_slot, restoredSizeLater / valueSize);
}

/// A head that finds the token at hand elsewhere, and puts into a slot how the sentence began in which it stands there.
/// What is nowhere else finds the beginning of a message.
void Builder::setAgainHead(int layer)
{
    const Matrix keys = head(layer, "k", 0);
    const Matrix queries = head(layer, "q", 0);
    shrink(keys);
    shrink(queries);
    const int matched = m_slot - 2;
    addContentCode(keys, m_fast, matched, againSharpness);
    addContentCode(queries, m_fast, matched, againSharpness);
    const int nowhere = m_fast + matched;
    const float *const mark = matrix("token_embd.weight").row(0);
    for (int i = 0; i < m_content; ++i)
        keys.row(nowhere)[i] += nowhereSharpness * mark[i] / contentLength;
    queries.row(nowhere)[constantColumn()] += nowhereSharpness;
    // The fastest pairs stand against each other where the distance is none, and agree in nothing farther away.
    for (int pair = 0; pair < m_shape.headSize * 9 / 32; pair += 2) {
        keys.row(pair)[constantColumn()] += nearbySharpness;
        queries.row(pair)[constantColumn()] -= nearbySharpness / 4;
    }
    const Matrix values = head(layer, "v", 0);
    shrink(values);
    addIdentity(values, 0, beginningSlot(), m_slot, valueSize);
    const Matrix output = outputOfHead(layer, 0);
    shrink(output);
    addIdentity(output, againSlot(), 0, m_slot, restoredSizeLater / valueSize);
}

void Builder::setMatchingKeys(Matrix keys, Match match)
{
    shrink(keys);
    if (match == Match::token) {
        addIdentity(keys, m_fast, previousSlot(), m_slot, matchSharpness);
        return;
    }
    const int half = m_slot / 2;
    addIdentity(keys, m_fast, previousSlot(), half, pairSharpness);
    addIdentity(keys, m_fast + half, secondSlot(), half, pairSharpness);
}

void Builder::setMatchingQueries(Matrix queries, Match match)
{
    shrink(queries);
    if (match == Match::token) {
        addContentCode(queries, m_fast, m_slot, matchSharpness);
        return;
    }
    const int half = m_slot / 2;
    addContentCode(queries, m_fast, half, pairSharpness);
    addIdentity(queries, m_fast + half, previousSlot(), half, pairSharpness);
}

void Builder::setCopiedValues(Matrix values, ConstMatrix directions) const
{
    shrink(values);
    for (int row = 0; row < directions.rows; ++row)
        for (int i = 0; i < m_content; ++i)
            values.row(row)[i] += directions.row(row)[i] * valueSize;
}

void Builder::setCopyingOutput(Matrix output, ConstMatrix directions) const
{
    shrink(output);
    for (int row = 0; row < directions.rows; ++row)
        for (int i = 0; i < m_content; ++i)
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
    const ConstMatrix code = directions(m_content - m_slot, m_slot);
    for (int row = 0; row < count; ++row)
        for (int i = 0; i < m_content; ++i)
            rows.row(firstRow + row)[i] += code.row(row)[i] * size;
}

} // namespace

std::vector<float> startingWeights(const Shape &shape, std::span<const std::string> texts, std::uint32_t seed)
{
    return Builder(shape, texts, seed).build();
}

} // namespace lumora::training
