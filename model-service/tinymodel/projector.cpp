// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "projector.h"

#include <array>
#include <string>

namespace lumora::tinymodel {

namespace {

constexpr std::int64_t imageSide = 32; // pixels that are seen at once
constexpr std::int64_t patchSide = 8;
constexpr std::int64_t patches = (imageSide / patchSide) * (imageSide / patchSide);
constexpr std::int64_t features = 32; // of each patch
constexpr std::int64_t hidden = 64;
constexpr std::int64_t heads = 2;
constexpr std::int64_t merge = 2; // patches to a side that become one token
constexpr std::int64_t merged = merge * merge * features;
constexpr float epsilon = 1e-6F;

void addPatches(std::vector<Matrix> &weights, Random &random, const std::string &name)
{
    constexpr std::int64_t numbers = 3 * patchSide * patchSide;
    weights.push_back(random.matrix(name, numbers, features, inverseRoot(numbers)));
    weights.back().sides = {patchSide, patchSide, 3, features};
}

void addLinear(std::vector<Matrix> &weights, Random &random, const std::string &name, std::int64_t from,
               std::int64_t to)
{
    weights.push_back(random.matrix(name + ".weight", from, to, inverseRoot(from)));
    weights.push_back(constant(name + ".bias", to, 0.0F));
}

void addNorm(std::vector<Matrix> &weights, const std::string &name)
{
    weights.push_back(constant(name + ".weight", features, 1.0F));
    weights.push_back(constant(name + ".bias", features, 0.0F));
}

} // namespace

void describeProjector(gguf_context *file, ProjectorKind kind, std::int64_t width)
{
    const auto number = [file](const char *key, std::int64_t value) {
        gguf_set_val_u32(file, key, static_cast<std::uint32_t>(value));
    };
    constexpr std::array<float, 3> half = {0.5F, 0.5F, 0.5F};
    gguf_set_val_str(file, "general.architecture", "clip");
    gguf_set_val_str(file, "general.name", "Lumora's stand-in for a projector");
    gguf_set_val_bool(file, "clip.has_vision_encoder", true);
    gguf_set_val_str(file, "clip.projector_type", kind == ProjectorKind::grid ? "qwen2vl_merger" : "idefics3");
    gguf_set_val_bool(file, "clip.use_gelu", true);
    number("clip.vision.image_size", imageSide);
    number("clip.vision.preproc_image_size", 2 * imageSide);
    number("clip.vision.patch_size", patchSide);
    number("clip.vision.embedding_length", features);
    number("clip.vision.feed_forward_length", hidden);
    number("clip.vision.block_count", 1);
    number("clip.vision.attention.head_count", heads);
    number("clip.vision.projection_dim", width);
    number("clip.vision.projector.scale_factor", merge);
    gguf_set_val_f32(file, "clip.vision.attention.layer_norm_epsilon", epsilon);
    gguf_set_arr_data(file, "clip.vision.image_mean", GGUF_TYPE_FLOAT32, half.data(), half.size());
    gguf_set_arr_data(file, "clip.vision.image_std", GGUF_TYPE_FLOAT32, half.data(), half.size());
}

std::vector<Matrix> projectorWeights(ProjectorKind kind, std::int64_t width)
{
    Random random;
    std::vector<Matrix> weights;
    addPatches(weights, random, "v.patch_embd.weight");
    if (kind == ProjectorKind::grid)
        addPatches(weights, random, "v.patch_embd.weight.1"); // for the second of two pictures of a film
    else
        weights.push_back(random.matrix("v.position_embd.weight", features, patches, 1.0F));
    addNorm(weights, "v.blk.0.ln1");
    for (const char *const name : {"attn_q", "attn_k", "attn_v", "attn_out"})
        addLinear(weights, random, std::string("v.blk.0.") + name, features, features);
    addNorm(weights, "v.blk.0.ln2");
    addLinear(weights, random, "v.blk.0.ffn_up", features, hidden);
    addLinear(weights, random, "v.blk.0.ffn_down", hidden, features);
    addNorm(weights, "v.post_ln");
    if (kind == ProjectorKind::grid) {
        addLinear(weights, random, "mm.0", merged, merged);
        addLinear(weights, random, "mm.2", merged, width);
    } else {
        weights.push_back(random.matrix("mm.model.fc.weight", merged, width, inverseRoot(merged)));
    }
    return weights;
}

} // namespace lumora::tinymodel
