// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/startingweights.h"

#include "trainer/matrix.h"

#include <cmath>
#include <random>
#include <stdexcept>

namespace lumora::training {

namespace {

// The sizes below fit together as docs/starting-weights.md derives it.
constexpr float contentSize = 0.1F;  // of each number of a token's content
constexpr float constantSize = 0.6F; // of the number that all tokens have in common
constexpr float spareSize = 0.006F;  // of what means nothing at first
constexpr float randomShare = 0.2F;  // of the random weights that stay where something is set
constexpr float offsetSharpness = 1.3F;
constexpr float matchSharpness = 2.0F;
constexpr float pairSharpness = 2.4F; // a pair of tokens is matched with half as many numbers for each
constexpr float valueSize = 0.5F;
constexpr float restoredSize = 0.087F; // what a norm has to be undone with to give the embedding's size back
constexpr float copiedSize = 0.18F;

constexpr int spareColumns = 7;

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
    Builder(const Shape &shape, std::uint32_t seed);

    std::vector<float> build();

private:
    Matrix matrix(const std::string &name);
    Matrix head(int layer, const std::string &which, int index);
    Matrix outputOfHead(int layer, int index);
    std::vector<float> orthogonalRows(int rows, int columns);
    float normal(float size) { return size * m_normal(m_random); }
    int constantColumn() const { return m_shape.width - 1; }
    int previousSlot() const { return m_content; }
    int secondSlot() const { return m_content + m_slot; }

    void fillRandomly();
    void setEmbeddings();
    void setPreviousTokenHead(int index, int distance, int slot);
    void setOffset(Matrix queries, int distance);
    void setCopyingHeads(int layer);
    void setMatchingKeys(Matrix keys, Match match);
    void setMatchingQueries(Matrix queries, Match match);
    void setCopiedValues(Matrix values, ConstMatrix directions) const;
    void setCopyingOutput(Matrix output, ConstMatrix directions) const;
    static void addIdentity(Matrix rows, int firstRow, int firstColumn, int count, float size);
    void addContentCode(Matrix rows, int firstRow, int count, float size) const;

    Shape m_shape;
    WeightLayout m_layout;
    std::mt19937 m_random;
    std::normal_distribution<float> m_normal;
    std::vector<float> m_weights;
    int m_fast;                // the first of a head's numbers that turn so slowly that distance hardly matters
    int m_slot;                // columns of a slot, as many as there are slow numbers
    int m_content;             // columns of the content
    std::vector<float> m_code; // slot × content: how content is put into a slot
};

Builder::Builder(const Shape &shape, std::uint32_t seed)
    : m_shape(shape)
    , m_layout(shape)
    , m_random(seed)
    , m_weights(m_layout.size())
    , m_fast(shape.headSize * 7 / 16 / 2 * 2)
    , m_slot(shape.headSize - m_fast)
    , m_content(shape.width - 1 - 2 * m_slot - spareColumns)
{
    const bool hasGroups = shape.keyHeads >= 2 && shape.heads >= 2 * shape.keyHeads;
    if (!hasGroups || shape.layers < 3 || m_content < shape.headSize || m_slot % 2 != 0)
        throw std::invalid_argument("a decoder of this shape has no room for the starting weights");
    m_code = orthogonalRows(m_slot, m_content);
}

std::vector<float> Builder::build()
{
    fillRandomly();
    setEmbeddings();
    setPreviousTokenHead(0, 1, previousSlot());
    setPreviousTokenHead(1, 2, secondSlot());
    setCopyingHeads(1);
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

/// All contents are of one length, so that a norm leaves of each token's constant the same: heads that look for a
/// distance compare keys that are nothing but constants.
void Builder::setEmbeddings()
{
    const Matrix embeddings = matrix("token_embd.weight");
    const float length = contentSize * std::sqrt(static_cast<float>(m_content));
    for (int token = 0; token < embeddings.rows; ++token) {
        float *const row = embeddings.row(token);
        const std::vector<float> direction = orthogonalRows(1, m_content);
        for (int i = 0; i < m_content; ++i)
            row[i] = length * direction[i];
        for (int i = m_content; i < constantColumn(); ++i)
            row[i] = normal(spareSize);
        row[constantColumn()] = constantSize;
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
    const std::vector<float> directions = orthogonalRows(m_content, m_content);
    const ConstMatrix rows(directions.data(), m_content, m_content);
    for (int keyHead = 0; keyHead < 2; ++keyHead) {
        const Match match = keyHead == 0 ? Match::token : Match::pair;
        setMatchingKeys(head(layer, "k", keyHead), match);
        const int first = match == Match::token ? 0 : m_content - m_shape.headSize;
        const ConstMatrix copied = rows.rowsFrom(first, m_shape.headSize);
        setCopiedValues(head(layer, "v", keyHead), copied);
        for (int index = keyHead * group; index < (keyHead + 1) * group; ++index) {
            setMatchingQueries(head(layer, "q", index), match);
            setCopyingOutput(outputOfHead(layer, index), copied);
        }
    }
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
    const ConstMatrix code(m_code.data(), m_slot, m_content);
    for (int row = 0; row < count; ++row)
        for (int i = 0; i < m_content; ++i)
            rows.row(firstRow + row)[i] += code.row(row)[i] * size;
}

} // namespace

std::vector<float> startingWeights(const Shape &shape, std::uint32_t seed)
{
    return Builder(shape, seed).build();
}

} // namespace lumora::training
