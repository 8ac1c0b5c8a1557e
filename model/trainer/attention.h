// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/batch.h"
#include "trainer/matrix.h"
#include "trainer/shape.h"

#include <vector>

namespace lumora::training {

/// Causal attention over the segments of a batch, in blocks of queries, so that what comes after a block is not
/// computed. Rows of queryKeyValue: all query heads, then all key heads, then their values. Has working memory; one
/// thread.
class Attention
{
public:
    explicit Attention(const Shape &shape);

    /// output: for each token, what its heads have found, one behind the other. weights: for each token and head, the
    /// logarithm of the sum of its scores' exponentials, which the way back needs.
    void forward(const Batch &batch, ConstMatrix queryKeyValue, Matrix output, Matrix logSums);

    /// Adds to the gradient of queryKeyValue.
    void backward(const Batch &batch, ConstMatrix queryKeyValue, ConstMatrix output, ConstMatrix logSums,
                  ConstMatrix outputGradient, Matrix queryKeyValueGradient);

private:
    struct Block;

    void gather(const Segment &segment, ConstMatrix queryKeyValue, int keyHead);
    void scatter(const Segment &segment, Matrix gradient, int keyHead) const;
    Matrix scores(const Block &block, ConstMatrix queries);
    void backwardBlock(const Block &block, int head, ConstMatrix queryKeyValue, ConstMatrix output, ConstMatrix logSums,
                       ConstMatrix outputGradient, Matrix gradient);
    template <typename Action>
    void forEachBlock(const Segment &segment, int keyHead, Action action);
    int keyColumn(int keyHead) const { return m_shape.queryWidth() + keyHead * m_shape.headSize; }
    int valueColumn(int keyHead) const { return keyColumn(keyHead) + m_shape.keyWidth(); }

    Shape m_shape;
    float m_scale;
    // Of one key head and everything that one segment sees: the prefix, then itself.
    std::vector<float> m_keys;
    std::vector<float> m_values;
    std::vector<float> m_keyGradients;
    std::vector<float> m_valueGradients;
    std::vector<float> m_scores;
    std::vector<float> m_scoreGradients;
};

} // namespace lumora::training
