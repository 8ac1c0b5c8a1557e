// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/network.h"

#include <algorithm>
#include <cmath>

namespace lumora::training {

namespace {

std::size_t product(int left, int right)
{
    return static_cast<std::size_t>(left) * static_cast<std::size_t>(right);
}

void grow(std::vector<float> &numbers, std::size_t size)
{
    numbers.resize(std::max(numbers.size(), size));
}

template <typename Number>
MatrixView<Number> at(std::span<Number> all, std::size_t offset, int rows, int columns)
{
    return {all.data() + offset, rows, columns};
}

template <typename Number>
std::span<Number> vectorAt(std::span<Number> all, std::size_t offset, int size)
{
    return all.subspan(offset, static_cast<std::size_t>(size));
}

} // namespace

Network::Network(const Shape &shape)
    : m_shape(shape)
    , m_layout(shape)
    , m_rotations(shape.headSize, shape.context, shape.ropeBase)
    , m_attention(shape)
    , m_layers(static_cast<std::size_t>(shape.layers))
{
}

double Network::learn(std::span<const float> weights, const Batch &batch, std::span<float> gradients)
{
    forward(weights, batch);
    computeLogits(weights, batch);
    const double loss = lossAndGradient(batch);
    backwardOutput(weights, batch, gradients);
    for (int layer = m_shape.layers - 1; layer >= 0; --layer) {
        backwardFeedForward(weights, layer, batch.size(), gradients);
        backwardAttention(weights, batch, layer, gradients);
    }
    const Matrix embeddings = at(gradients, m_layout.embedding(), m_shape.vocabulary, m_shape.width);
    for (int i = 0; i < batch.size(); ++i) {
        float *const row = embeddings.row(batch.tokens[i]);
        for (int j = 0; j < m_shape.width; ++j)
            row[j] += m_gradient[product(i, m_shape.width) + j];
    }
    return loss;
}

Network::Prediction Network::predict(std::span<const float> weights, const Batch &batch)
{
    forward(weights, batch);
    computeLogits(weights, batch);
    Prediction prediction;
    for (std::size_t i = 0; i < batch.targets.size(); ++i) {
        const auto row = vectorAt(std::span(m_logits), i * m_shape.vocabulary, m_shape.vocabulary);
        prediction.tokens.push_back(static_cast<Token>(std::ranges::max_element(row) - row.begin()));
    }
    prediction.loss = lossAndGradient(batch);
    return prediction;
}

void Network::reserve(const Batch &batch)
{
    const int count = batch.size();
    const int width = m_shape.queryWidth() + 2 * m_shape.keyWidth();
    for (LayerMemory &layer : m_layers) {
        for (auto *const numbers : {&layer.input, &layer.normed, &layer.middle, &layer.middleNormed})
            grow(*numbers, product(count, m_shape.width));
        grow(layer.scales, product(count, 1));
        grow(layer.middleScales, product(count, 1));
        grow(layer.queryKeyValue, product(count, width));
        grow(layer.found, product(count, m_shape.queryWidth()));
        grow(layer.logSums, product(count, m_shape.heads));
        grow(layer.gateUp, product(count, 2 * m_shape.hidden));
        grow(layer.gated, product(count, m_shape.hidden));
    }
    grow(m_output, product(count, m_shape.width));
    grow(m_normedGradient, product(count, m_shape.width));
    grow(m_queryKeyValueGradient, product(count, width));
    grow(m_foundGradient, product(count, m_shape.queryWidth()));
    grow(m_gateUpGradient, product(count, 2 * m_shape.hidden));
    grow(m_gatedGradient, product(count, m_shape.hidden));
}

std::vector<float> &Network::outputOf(int layer)
{
    return layer + 1 < m_shape.layers ? m_layers[layer + 1].input : m_output;
}

void Network::forward(std::span<const float> weights, const Batch &batch)
{
    reserve(batch);
    const ConstMatrix embeddings = at(weights, m_layout.embedding(), m_shape.vocabulary, m_shape.width);
    for (int i = 0; i < batch.size(); ++i)
        std::copy_n(embeddings.row(batch.tokens[i]), m_shape.width,
                    m_layers.front().input.data() + product(i, m_shape.width));
    for (int layer = 0; layer < m_shape.layers; ++layer) {
        forwardAttention(weights, batch, layer);
        forwardFeedForward(weights, layer, batch.size());
    }
}

void Network::forwardAttention(std::span<const float> weights, const Batch &batch, int layer)
{
    LayerMemory &memory = m_layers[layer];
    const WeightLayout::Layer &places = m_layout.layer(layer);
    const int count = batch.size();
    const int width = m_shape.width;
    const int rowWidth = m_shape.queryWidth() + 2 * m_shape.keyWidth();
    const Matrix normed(memory.normed.data(), count, width);
    const Matrix rows(memory.queryKeyValue.data(), count, rowWidth);
    const Matrix found(memory.found.data(), count, m_shape.queryWidth());

    normalise(ConstMatrix(memory.input.data(), count, width), vectorAt(weights, places.attentionNorm, width),
              m_shape.normEpsilon, normed, memory.scales);
    multiplyByTransposed(normed, at(weights, places.queryKeyValue, rowWidth, width), rows, Into::replace);
    m_rotations.turn(rows.columnsFrom(0, m_shape.queryWidth() + m_shape.keyWidth()), batch.positions,
                     Rotations::Direction::forward);
    m_attention.forward(batch, rows, found, Matrix(memory.logSums.data(), count, m_shape.heads));
    std::copy_n(memory.input.data(), product(count, width), memory.middle.data());
    multiplyByTransposed(found, at(weights, places.attentionOutput, width, m_shape.queryWidth()),
                         Matrix(memory.middle.data(), count, width), Into::add);
}

void Network::forwardFeedForward(std::span<const float> weights, int layer, int count)
{
    LayerMemory &memory = m_layers[layer];
    const WeightLayout::Layer &places = m_layout.layer(layer);
    const int width = m_shape.width;
    const Matrix normed(memory.middleNormed.data(), count, width);
    const Matrix gateUp(memory.gateUp.data(), count, 2 * m_shape.hidden);
    const Matrix gated(memory.gated.data(), count, m_shape.hidden);

    normalise(ConstMatrix(memory.middle.data(), count, width), vectorAt(weights, places.feedForwardNorm, width),
              m_shape.normEpsilon, normed, memory.middleScales);
    multiplyByTransposed(normed, at(weights, places.gateUp, 2 * m_shape.hidden, width), gateUp, Into::replace);
    gate(gateUp, gated);
    std::copy_n(memory.middle.data(), product(count, width), outputOf(layer).data());
    multiplyByTransposed(gated, at(weights, places.down, width, m_shape.hidden),
                         Matrix(outputOf(layer).data(), count, width), Into::add);
}

void Network::computeLogits(std::span<const float> weights, const Batch &batch)
{
    const auto count = static_cast<int>(batch.targets.size());
    const int width = m_shape.width;
    grow(m_last, product(count, width));
    grow(m_lastNormed, product(count, width));
    grow(m_lastScales, product(count, 1));
    grow(m_logits, product(count, m_shape.vocabulary));
    for (int i = 0; i < count; ++i)
        std::copy_n(m_output.data() + product(batch.targets[i].place, width), width, m_last.data() + product(i, width));
    const Matrix normed(m_lastNormed.data(), count, width);
    normalise(ConstMatrix(m_last.data(), count, width), vectorAt(weights, m_layout.outputNorm(), width),
              m_shape.normEpsilon, normed, m_lastScales);
    multiplyByTransposed(normed, at(weights, m_layout.embedding(), m_shape.vocabulary, width),
                         Matrix(m_logits.data(), count, m_shape.vocabulary), Into::replace);
}

/// The loss; its gradient takes the place of the logits.
double Network::lossAndGradient(const Batch &batch)
{
    double loss = 0;
    for (std::size_t i = 0; i < batch.targets.size(); ++i) {
        const Target &target = batch.targets[i];
        const auto row = vectorAt(std::span(m_logits), i * m_shape.vocabulary, m_shape.vocabulary);
        const float most = largest(row);
        const float logit = row[target.token];
        const float sum = exponentials(row, most);
        loss += double{target.weight} * (most + std::log(sum) - logit);
        const float share = target.weight / sum;
        for (float &number : row)
            number *= share;
        row[target.token] -= target.weight;
    }
    return loss;
}

void Network::backwardOutput(std::span<const float> weights, const Batch &batch, std::span<float> gradients)
{
    const auto count = static_cast<int>(batch.targets.size());
    const int width = m_shape.width;
    const ConstMatrix logits(m_logits.data(), count, m_shape.vocabulary);
    grow(m_normedGradient, product(count, width));
    const Matrix normedGradient(m_normedGradient.data(), count, width);
    multiplyTransposed(logits, ConstMatrix(m_lastNormed.data(), count, width),
                       at(gradients, m_layout.embedding(), m_shape.vocabulary, width), Into::add);
    multiply(logits, at(weights, m_layout.embedding(), m_shape.vocabulary, width), normedGradient, Into::replace);
    m_lastGradient.assign(product(count, width), 0.0F);
    normaliseBackward(ConstMatrix(m_last.data(), count, width), vectorAt(weights, m_layout.outputNorm(), width),
                      m_lastScales, normedGradient, Matrix(m_lastGradient.data(), count, width),
                      vectorAt(gradients, m_layout.outputNorm(), width));
    m_gradient.assign(product(batch.size(), width), 0.0F);
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < width; ++j)
            m_gradient[product(batch.targets[i].place, width) + j] += m_lastGradient[product(i, width) + j];
}

void Network::backwardFeedForward(std::span<const float> weights, int layer, int count, std::span<float> gradients)
{
    const LayerMemory &memory = m_layers[layer];
    const WeightLayout::Layer &places = m_layout.layer(layer);
    const int width = m_shape.width;
    const int hidden = m_shape.hidden;
    const Matrix flow(m_gradient.data(), count, width);
    const Matrix gatedGradient(m_gatedGradient.data(), count, hidden);
    const Matrix gateUpGradient(m_gateUpGradient.data(), count, 2 * hidden);
    const Matrix normedGradient(m_normedGradient.data(), count, width);

    multiplyTransposed(flow, ConstMatrix(memory.gated.data(), count, hidden), at(gradients, places.down, width, hidden),
                       Into::add);
    multiply(flow, at(weights, places.down, width, hidden), gatedGradient, Into::replace);
    gateBackward(ConstMatrix(memory.gateUp.data(), count, 2 * hidden), gatedGradient, gateUpGradient);
    multiplyTransposed(gateUpGradient, ConstMatrix(memory.middleNormed.data(), count, width),
                       at(gradients, places.gateUp, 2 * hidden, width), Into::add);
    multiply(gateUpGradient, at(weights, places.gateUp, 2 * hidden, width), normedGradient, Into::replace);
    normaliseBackward(ConstMatrix(memory.middle.data(), count, width), vectorAt(weights, places.feedForwardNorm, width),
                      memory.middleScales, normedGradient, flow, vectorAt(gradients, places.feedForwardNorm, width));
}

void Network::backwardAttention(std::span<const float> weights, const Batch &batch, int layer,
                                std::span<float> gradients)
{
    const LayerMemory &memory = m_layers[layer];
    const WeightLayout::Layer &places = m_layout.layer(layer);
    const int count = batch.size();
    const int width = m_shape.width;
    const int queryWidth = m_shape.queryWidth();
    const int rowWidth = queryWidth + 2 * m_shape.keyWidth();
    const Matrix flow(m_gradient.data(), count, width);
    const ConstMatrix found(memory.found.data(), count, queryWidth);
    const Matrix foundGradient(m_foundGradient.data(), count, queryWidth);
    const Matrix rowGradient(m_queryKeyValueGradient.data(), count, rowWidth);
    const Matrix normedGradient(m_normedGradient.data(), count, width);

    multiplyTransposed(flow, found, at(gradients, places.attentionOutput, width, queryWidth), Into::add);
    multiply(flow, at(weights, places.attentionOutput, width, queryWidth), foundGradient, Into::replace);
    std::fill_n(rowGradient.data, product(count, rowWidth), 0.0F);
    m_attention.backward(batch, ConstMatrix(memory.queryKeyValue.data(), count, rowWidth), found,
                         ConstMatrix(memory.logSums.data(), count, m_shape.heads), foundGradient, rowGradient);
    m_rotations.turn(rowGradient.columnsFrom(0, queryWidth + m_shape.keyWidth()), batch.positions,
                     Rotations::Direction::back);
    multiplyTransposed(rowGradient, ConstMatrix(memory.normed.data(), count, width),
                       at(gradients, places.queryKeyValue, rowWidth, width), Into::add);
    multiply(rowGradient, at(weights, places.queryKeyValue, rowWidth, width), normedGradient, Into::replace);
    normaliseBackward(ConstMatrix(memory.input.data(), count, width), vectorAt(weights, places.attentionNorm, width),
                      memory.scales, normedGradient, flow, vectorAt(gradients, places.attentionNorm, width));
}

} // namespace lumora::training
