// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/shape.h"

#include <algorithm>
#include <stdexcept>

namespace lumora::training {

WeightLayout::WeightLayout(const Shape &shape)
{
    add("token_embd.weight", shape.vocabulary, shape.width);
    for (int i = 0; i < shape.layers; ++i) {
        const std::string block = "blk." + std::to_string(i) + '.';
        Layer &layer = m_layers.emplace_back();
        layer.attentionNorm = add(block + "attn_norm.weight", 1, shape.width);
        layer.queryKeyValue = add(block + "attn_q.weight", shape.queryWidth(), shape.width);
        add(block + "attn_k.weight", shape.keyWidth(), shape.width);
        add(block + "attn_v.weight", shape.keyWidth(), shape.width);
        layer.attentionOutput = add(block + "attn_output.weight", shape.width, shape.queryWidth());
        layer.feedForwardNorm = add(block + "ffn_norm.weight", 1, shape.width);
        layer.gateUp = add(block + "ffn_gate.weight", shape.hidden, shape.width);
        add(block + "ffn_up.weight", shape.hidden, shape.width);
        layer.down = add(block + "ffn_down.weight", shape.width, shape.hidden);
    }
    add("output_norm.weight", 1, shape.width);
}

const Tensor &WeightLayout::tensor(const std::string &name) const
{
    const auto found = std::ranges::find(m_tensors, name, &Tensor::name);
    if (found == m_tensors.end())
        throw std::out_of_range("there is no tensor " + name);
    return *found;
}

std::size_t WeightLayout::add(const std::string &name, int rows, int columns)
{
    m_tensors.push_back({name, m_size, rows, columns});
    m_size += m_tensors.back().size();
    return m_tensors.back().offset;
}

} // namespace lumora::training
