// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/builtinmodel.h"

#include "conversations/trainingvocabulary.h"
#include "modelfile/ggufreader.h"
#include "modelfile/ggufwriter.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace lumora::training {

namespace {

void addShape(GgufWriter &file, const Shape &shape)
{
    const auto number = [&file](const std::string &name, int value) {
        file.add("llama." + name, static_cast<std::uint32_t>(value));
    };
    number("context_length", shape.context);
    number("embedding_length", shape.width);
    number("block_count", shape.layers);
    number("feed_forward_length", shape.hidden);
    number("attention.head_count", shape.heads);
    number("attention.head_count_kv", shape.keyHeads);
    number("attention.key_length", shape.headSize);
    number("attention.value_length", shape.headSize);
    number("rope.dimension_count", shape.headSize);
    number("vocab_size", shape.vocabulary);
    file.add("llama.rope.freq_base", shape.ropeBase);
    file.add("llama.attention.layer_norm_rms_epsilon", shape.normEpsilon);
}

Shape readShape(const GgufReader &file)
{
    const auto number = [&file](const std::string &name) { return static_cast<int>(file.number("llama." + name)); };
    return {.vocabulary = number("vocab_size"),
            .width = number("embedding_length"),
            .layers = number("block_count"),
            .heads = number("attention.head_count"),
            .keyHeads = number("attention.head_count_kv"),
            .headSize = number("attention.key_length"),
            .hidden = number("feed_forward_length"),
            .context = number("context_length"),
            .ropeBase = static_cast<float>(file.number("llama.rope.freq_base")),
            .normEpsilon = static_cast<float>(file.number("llama.attention.layer_norm_rms_epsilon"))};
}

void addVocabulary(GgufWriter &file, const Tokenizer &tokenizer)
{
    constexpr std::int32_t normal = 1;
    constexpr std::int32_t control = 3;
    std::vector<std::int32_t> types(tokenizer.size(), normal);
    std::fill_n(types.begin(), Tokenizer::firstByte, control);
    std::vector<std::string> merges;
    for (const auto &[left, right] : tokenizer.merges())
        merges.emplace_back(left).append(" ").append(right);
    file.add("tokenizer.ggml.model", "gpt2");
    file.add("tokenizer.ggml.pre", "gpt-2");
    file.add("tokenizer.ggml.tokens", tokenizer.texts());
    file.add("tokenizer.ggml.token_type", types);
    file.add("tokenizer.ggml.merges", merges);
    file.add("tokenizer.ggml.bos_token_id", static_cast<std::uint32_t>(Tokenizer::messageStart));
    file.add("tokenizer.ggml.eos_token_id", static_cast<std::uint32_t>(Tokenizer::messageEnd));
    file.add("tokenizer.ggml.eot_token_id", static_cast<std::uint32_t>(Tokenizer::messageEnd));
    file.add("tokenizer.ggml.add_bos_token", false);
    file.add("tokenizer.ggml.add_space_prefix", false);
    file.add("tokenizer.chat_template", chatTemplate);
}

void addDescription(GgufWriter &file, NumberFormat format)
{
    constexpr std::uint32_t mostlyEightBits = 7;
    file.add("general.architecture", "llama");
    file.add("general.type", "model");
    file.add("general.name", "Lumora built-in model");
    file.add("general.author", "The Lumora developers");
    file.add("general.license", "gpl-3.0-or-later");
    file.add("general.description", "A small model for Lumora's own jobs, trained on texts that a program made up.");
    file.add("general.file_type",
             format == NumberFormat::eightBits ? mostlyEightBits : static_cast<std::uint32_t>(format));
    file.add("general.quantization_version", std::uint32_t{2});
    // The most likely token, always: what this model has to say is mostly copied, and chance only adds errors.
    file.add("general.sampling.temp", 0.0F);
    file.add("general.sampling.top_k", std::int32_t{1});
}

/// Blocks of eight-bit numbers stand within a row, so that rows of other sizes keep half precision.
NumberFormat formatOf(const Tensor &tensor, NumberFormat wanted)
{
    constexpr int block = 32;
    return wanted == NumberFormat::eightBits && tensor.columns % block != 0 ? NumberFormat::half : wanted;
}

std::vector<std::uint64_t> sides(const Tensor &tensor)
{
    const auto columns = static_cast<std::uint64_t>(tensor.columns);
    if (tensor.rows == 1)
        return {columns};
    return {columns, static_cast<std::uint64_t>(tensor.rows)};
}

} // namespace

void writeModel(const BuiltInModel &model, const Tokenizer &tokenizer, NumberFormat format, const std::string &path)
{
    GgufWriter file;
    addDescription(file, format);
    addShape(file, model.shape);
    addVocabulary(file, tokenizer);
    const WeightLayout layout(model.shape);
    for (const Tensor &tensor : layout.tensors())
        file.addTensor(tensor.name, tensor.in(std::span(model.weights)), sides(tensor), formatOf(tensor, format));
    std::ostringstream bytes;
    file.write(bytes);
    replaceFile(path, bytes.str());
}

BuiltInModel readModel(const std::string &path, const Tokenizer &tokenizer)
{
    const GgufReader file(readFile(path));
    if (file.texts("tokenizer.ggml.tokens") != tokenizer.texts())
        throw std::runtime_error("the model " + path + " has another vocabulary");
    BuiltInModel model{readShape(file), {}};
    const WeightLayout layout(model.shape);
    model.weights.resize(layout.size());
    for (const Tensor &tensor : layout.tensors()) {
        const std::vector<float> numbers = file.tensor(tensor.name);
        if (numbers.size() != tensor.size())
            throw std::runtime_error("the tensor " + tensor.name + " has another size than the shape says");
        std::ranges::copy(numbers, tensor.in(std::span(model.weights)).begin());
    }
    return model;
}

void replaceFile(const std::string &path, const std::string &bytes)
{
    const std::string partial = path + ".part";
    std::ofstream file(partial, std::ios::binary);
    file << bytes;
    file.close();
    if (!file)
        throw std::runtime_error(partial + " could not be written");
    std::filesystem::rename(partial, path);
}

std::string readFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    if (!file || !bytes)
        throw std::runtime_error(path + " could not be read");
    return bytes.str();
}

} // namespace lumora::training
