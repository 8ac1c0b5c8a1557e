// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/attention.h"
#include "trainer/batch.h"
#include "trainer/kernels.h"
#include "trainer/shape.h"

#include <span>
#include <vector>

namespace lumora::training {

/// Computes a decoder forward and backward. Holds working memory for one batch; one network for each thread. The
/// weights are the caller's, as WeightLayout orders them.
class Network
{
public:
    explicit Network(const Shape &shape);

    const WeightLayout &layout() const { return m_layout; }

    /// Adds the gradient of the loss to the gradients. The loss: the sum over the targets of their weight times the
    /// negative logarithm of the probability that the network gives them.
    double learn(std::span<const float> weights, const Batch &batch, std::span<float> gradients);

    struct Prediction
    {
        std::vector<Token> tokens; ///< the most likely one for each target
        double loss = 0;           ///< as above
    };

    Prediction predict(std::span<const float> weights, const Batch &batch);

private:
    /// What one layer computed, which the way back needs.
    struct LayerMemory
    {
        std::vector<float> input;
        std::vector<float> normed;
        std::vector<float> scales;
        std::vector<float> queryKeyValue;
        std::vector<float> found;
        std::vector<float> logSums;
        std::vector<float> middle; // the input and what the attention added
        std::vector<float> middleNormed;
        std::vector<float> middleScales;
        std::vector<float> gateUp;
        std::vector<float> gated;
    };

    void reserve(const Batch &batch);
    void forward(std::span<const float> weights, const Batch &batch);
    void forwardAttention(std::span<const float> weights, const Batch &batch, int layer);
    void forwardFeedForward(std::span<const float> weights, int layer, int count);
    void computeLogits(std::span<const float> weights, const Batch &batch);
    double lossAndGradient(const Batch &batch);
    void backwardOutput(std::span<const float> weights, const Batch &batch, std::span<float> gradients);
    void backwardFeedForward(std::span<const float> weights, int layer, int count, std::span<float> gradients);
    void backwardAttention(std::span<const float> weights, const Batch &batch, int layer, std::span<float> gradients);
    std::vector<float> &outputOf(int layer);

    Shape m_shape;
    WeightLayout m_layout;
    Rotations m_rotations;
    Attention m_attention;
    std::vector<LayerMemory> m_layers;
    std::vector<float> m_output;

    // Of the targets only.
    std::vector<float> m_last;
    std::vector<float> m_lastNormed;
    std::vector<float> m_lastScales;
    std::vector<float> m_logits; // then their gradients
    std::vector<float> m_lastGradient;

    // On the way back, of one layer.
    std::vector<float> m_gradient; // of what flows through all layers
    std::vector<float> m_normedGradient;
    std::vector<float> m_queryKeyValueGradient;
    std::vector<float> m_foundGradient;
    std::vector<float> m_gateUpGradient;
    std::vector<float> m_gatedGradient;
};

} // namespace lumora::training
