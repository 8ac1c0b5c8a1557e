// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// The sizes of a decoder of the llama architecture: RMS norms before attention and feed-forward, rotated positions,
/// gated feed-forward, key heads shared by query heads, and an output that is the embedding.
struct Shape
{
    int vocabulary = 2048;
    int width = 240;
    int layers = 6;
    int heads = 4;
    int keyHeads = 2; ///< a divisor of heads
    int headSize = 64;
    int hidden = 512;   ///< of the feed-forward
    int context = 4096; ///< positions
    float ropeBase = 500000.0F;
    float normEpsilon = 1e-5F;

    int queryWidth() const { return heads * headSize; }
    int keyWidth() const { return keyHeads * headSize; }

    bool operator==(const Shape &) const = default;
};

/// One tensor among all weights, which stand one behind the other. Named as GGUF files name it.
struct Tensor
{
    std::string name;
    std::size_t offset = 0;
    int rows = 1; ///< 1: a vector
    int columns = 0;

    std::size_t size() const { return static_cast<std::size_t>(rows) * columns; }

    template <typename Number>
    std::span<Number> in(std::span<Number> all) const
    {
        return all.subspan(offset, size());
    }
};

/// Where which weight stands. What is multiplied with the same vector stands together: queries, keys and values, and
/// the two halves of the feed-forward.
class WeightLayout
{
public:
    struct Layer
    {
        std::size_t attentionNorm = 0;
        std::size_t queryKeyValue = 0;
        std::size_t attentionOutput = 0;
        std::size_t feedForwardNorm = 0;
        std::size_t gateUp = 0;
        std::size_t down = 0;
    };

    explicit WeightLayout(const Shape &shape);

    std::size_t size() const { return m_size; } ///< numbers, all together
    std::size_t embedding() const { return 0; }
    std::size_t outputNorm() const { return m_tensors.back().offset; }
    const Layer &layer(int index) const { return m_layers[static_cast<std::size_t>(index)]; }
    const std::vector<Tensor> &tensors() const { return m_tensors; }

    /// Throws std::out_of_range where there is none of that name.
    const Tensor &tensor(const std::string &name) const;

private:
    std::size_t add(const std::string &name, int rows, int columns);

    std::vector<Tensor> m_tensors;
    std::vector<Layer> m_layers;
    std::size_t m_size = 0;
};

} // namespace lumora::training
