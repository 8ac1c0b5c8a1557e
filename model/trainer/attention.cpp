// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/attention.h"

#include "trainer/kernels.h"

#include <algorithm>
#include <cmath>

namespace lumora::training {

namespace {

constexpr int blockSize = 64; // queries

void copyRows(ConstMatrix from, float *to)
{
    for (int row = 0; row < from.rows; ++row)
        to = std::copy_n(from.row(row), from.columns, to);
}

void addRows(const float *from, Matrix to)
{
    for (int row = 0; row < to.rows; ++row, from += to.columns)
        for (int i = 0; i < to.columns; ++i)
            to.row(row)[i] += from[i];
}

} // namespace

/// Some queries of one segment and one head, and how many keys the last of them sees.
struct Attention::Block
{
    int head = 0;
    int first = 0; ///< row in the batch
    int rows = 0;
    int keys = 0;

    int keysOf(int row) const { return keys - (rows - 1 - row); }
};

Attention::Attention(const Shape &shape)
    : m_shape(shape)
    , m_scale(1.0F / std::sqrt(static_cast<float>(shape.headSize)))
{
}

template <typename Action>
void Attention::forEachBlock(const Segment &segment, int keyHead, Action action)
{
    const int group = m_shape.heads / m_shape.keyHeads;
    for (int head = keyHead * group; head < (keyHead + 1) * group; ++head) {
        for (int start = 0; start < segment.size; start += blockSize) {
            const int rows = std::min(blockSize, segment.size - start);
            action(Block{head, segment.begin + start, rows, segment.prefixSize + start + rows});
        }
    }
}

void Attention::gather(const Segment &segment, ConstMatrix queryKeyValue, int keyHead)
{
    const int size = m_shape.headSize;
    const auto count = static_cast<std::size_t>(segment.prefixSize + segment.size) * size;
    m_keys.resize(std::max(m_keys.size(), count));
    m_values.resize(m_keys.size());
    const std::ptrdiff_t own = std::ptrdiff_t{segment.prefixSize} * size;
    const ConstMatrix prefix = queryKeyValue.rowsFrom(segment.prefixBegin, segment.prefixSize);
    const ConstMatrix rows = queryKeyValue.rowsFrom(segment.begin, segment.size);
    copyRows(prefix.columnsFrom(keyColumn(keyHead), size), m_keys.data());
    copyRows(rows.columnsFrom(keyColumn(keyHead), size), m_keys.data() + own);
    copyRows(prefix.columnsFrom(valueColumn(keyHead), size), m_values.data());
    copyRows(rows.columnsFrom(valueColumn(keyHead), size), m_values.data() + own);
}

void Attention::scatter(const Segment &segment, Matrix gradient, int keyHead) const
{
    const int size = m_shape.headSize;
    const std::ptrdiff_t own = std::ptrdiff_t{segment.prefixSize} * size;
    const Matrix prefix = gradient.rowsFrom(segment.prefixBegin, segment.prefixSize);
    const Matrix rows = gradient.rowsFrom(segment.begin, segment.size);
    addRows(m_keyGradients.data(), prefix.columnsFrom(keyColumn(keyHead), size));
    addRows(m_keyGradients.data() + own, rows.columnsFrom(keyColumn(keyHead), size));
    addRows(m_valueGradients.data(), prefix.columnsFrom(valueColumn(keyHead), size));
    addRows(m_valueGradients.data() + own, rows.columnsFrom(valueColumn(keyHead), size));
}

Matrix Attention::scores(const Block &block, ConstMatrix queries)
{
    m_scores.resize(std::max(m_scores.size(), static_cast<std::size_t>(blockSize) * block.keys));
    const Matrix scores(m_scores.data(), block.rows, block.keys);
    multiplyByTransposed(queries, ConstMatrix(m_keys.data(), block.keys, m_shape.headSize), scores, Into::replace,
                         m_scale);
    return scores;
}

void Attention::forward(const Batch &batch, ConstMatrix queryKeyValue, Matrix output, Matrix logSums)
{
    const int size = m_shape.headSize;
    for (const Segment &segment : batch.segments) {
        for (int keyHead = 0; keyHead < m_shape.keyHeads; ++keyHead) {
            gather(segment, queryKeyValue, keyHead);
            forEachBlock(segment, keyHead, [&](const Block &block) {
                const int column = block.head * size;
                const Matrix weights =
                    scores(block, queryKeyValue.rowsFrom(block.first, block.rows).columnsFrom(column, size));
                for (int row = 0; row < block.rows; ++row) {
                    float *const numbers = weights.row(row);
                    const std::span<float> seen(numbers, static_cast<std::size_t>(block.keysOf(row)));
                    const float most = largest(seen);
                    const float sum = exponentials(seen, most);
                    logSums.row(block.first + row)[block.head] = most + std::log(sum);
                    for (float &number : seen)
                        number /= sum;
                    std::fill(numbers + seen.size(), numbers + block.keys, 0.0F);
                }
                multiply(weights, ConstMatrix(m_values.data(), block.keys, size),
                         output.rowsFrom(block.first, block.rows).columnsFrom(column, size), Into::replace);
            });
        }
    }
}

void Attention::backward(const Batch &batch, ConstMatrix queryKeyValue, ConstMatrix output, ConstMatrix logSums,
                         ConstMatrix outputGradient, Matrix queryKeyValueGradient)
{
    for (const Segment &segment : batch.segments) {
        const auto count = static_cast<std::size_t>(segment.prefixSize + segment.size) * m_shape.headSize;
        for (int keyHead = 0; keyHead < m_shape.keyHeads; ++keyHead) {
            gather(segment, queryKeyValue, keyHead);
            m_keyGradients.assign(count, 0.0F);
            m_valueGradients.assign(count, 0.0F);
            forEachBlock(segment, keyHead, [&](const Block &block) {
                backwardBlock(block, block.head, queryKeyValue, output, logSums, outputGradient, queryKeyValueGradient);
            });
            scatter(segment, queryKeyValueGradient, keyHead);
        }
    }
}

void Attention::backwardBlock(const Block &block, int head, ConstMatrix queryKeyValue, ConstMatrix output,
                              ConstMatrix logSums, ConstMatrix outputGradient, Matrix gradient)
{
    const int size = m_shape.headSize;
    const auto own = [&](auto matrix) {
        return matrix.rowsFrom(block.first, block.rows).columnsFrom(head * size, size);
    };
    const ConstMatrix queries = own(queryKeyValue);
    const ConstMatrix found = own(output);
    const ConstMatrix foundGradient = own(outputGradient);
    const Matrix weights = scores(block, queries);
    for (int row = 0; row < block.rows; ++row) {
        float *const numbers = weights.row(row);
        const auto seen = static_cast<std::size_t>(block.keysOf(row));
        exponentials({numbers, seen}, logSums.row(block.first + row)[head]);
        std::fill(numbers + seen, numbers + block.keys, 0.0F);
    }
    multiplyTransposed(weights, foundGradient, Matrix(m_valueGradients.data(), block.keys, size), Into::add);

    m_scoreGradients.resize(std::max(m_scoreGradients.size(), m_scores.size()));
    const Matrix scoreGradients(m_scoreGradients.data(), block.rows, block.keys);
    multiplyByTransposed(foundGradient, ConstMatrix(m_values.data(), block.keys, size), scoreGradients, Into::replace);
    for (int row = 0; row < block.rows; ++row) {
        float mean = 0; // of the gradients of all weights, which sum to one
        for (int i = 0; i < size; ++i)
            mean += found.row(row)[i] * foundGradient.row(row)[i];
        const float *const numbers = weights.row(row);
        float *const gradients = scoreGradients.row(row);
        for (int i = 0; i < block.keys; ++i)
            gradients[i] = numbers[i] * (gradients[i] - mean) * m_scale;
    }
    multiply(scoreGradients, ConstMatrix(m_keys.data(), block.keys, size), own(gradient), Into::add);
    multiplyTransposed(scoreGradients, queries, Matrix(m_keyGradients.data(), block.keys, size), Into::add);
}

} // namespace lumora::training
