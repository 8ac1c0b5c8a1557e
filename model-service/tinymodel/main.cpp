// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "projector.h"
#include "vocabulary.h"
#include "weights.h"

#include <ggml.h>
#include <gguf.h>
#include <llama.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace lumora::tinymodel;

namespace {

struct Deleter
{
    void operator()(gguf_context *context) const { gguf_free(context); }
    void operator()(ggml_context *context) const { ggml_free(context); }
};

struct Arguments
{
    std::string path;
    Behaviour behaviour;
    bool bench = false;
    bool projector = false;
    bool grid = false;
};

constexpr std::size_t benchVocabulary = 32000;
constexpr std::uint32_t contextLength = 4096;
constexpr std::array<std::int32_t, 4> gridSections = {4, 6, 6, 0};

// Names the marks, which is how the engine finds out which of its own layouts to take.
constexpr const char *chatTemplate =
    "{% for message in messages %}<|im_start|>{{ message.role }}\n{{ message.content }}<|im_end|>\n{% endfor %}"
    "{% if add_generation_prompt %}<|im_start|>assistant\n{% endif %}";

std::optional<Arguments> parse(const std::vector<std::string_view> &words)
{
    if (words.empty() || words.size() % 2 == 0)
        return std::nullopt;
    Arguments arguments{std::string(words.front())};
    for (std::size_t i = 1; i < words.size(); i += 2) {
        const std::string_view option = words[i];
        const std::string_view value = words[i + 1];
        if (option == "--size" && (value == "tiny" || value == "bench"))
            arguments.bench = value == "bench";
        else if (option == "--kind" && (value == "model" || value == "projector"))
            arguments.projector = value == "projector";
        else if (option == "--image-positions" && (value == "line" || value == "grid"))
            arguments.grid = value == "grid";
        else if (option == "--call-tool" && (value == "once" || value == "always"))
            arguments.behaviour.calls = value == "once" ? Calls::once : Calls::always;
        else if (option == "--ends" && value == "never")
            arguments.behaviour.ends = false;
        else
            return std::nullopt;
    }
    return arguments;
}

void describeVocabulary(gguf_context *file, const Vocabulary &vocabulary)
{
    std::vector<const char *> texts;
    for (const std::string &text : vocabulary.texts())
        texts.push_back(text.c_str());
    std::vector<const char *> merges;
    for (const std::string &merge : vocabulary.merges())
        merges.push_back(merge.c_str());
    gguf_set_val_str(file, "tokenizer.ggml.model", "gpt2");
    gguf_set_val_str(file, "tokenizer.ggml.pre", "gpt-2");
    gguf_set_arr_str(file, "tokenizer.ggml.tokens", texts.data(), texts.size());
    gguf_set_arr_data(file, "tokenizer.ggml.token_type", GGUF_TYPE_INT32, vocabulary.types().data(), texts.size());
    gguf_set_arr_str(file, "tokenizer.ggml.merges", merges.data(), merges.size());
    gguf_set_val_u32(file, "tokenizer.ggml.eos_token_id", static_cast<std::uint32_t>(vocabulary.endOfText()));
    gguf_set_val_u32(file, "tokenizer.ggml.eot_token_id", static_cast<std::uint32_t>(vocabulary.endOfTurn()));
    gguf_set_val_bool(file, "tokenizer.ggml.add_bos_token", false);
    gguf_set_val_str(file, "tokenizer.chat_template", chatTemplate);
}

void describe(gguf_context *file, const Shape &shape)
{
    const std::string architecture = shape.grid ? "qwen2vl" : "llama";
    const auto key = [&](const char *name) { return architecture + '.' + name; };
    const auto number = [&](const char *name, std::int64_t value) {
        gguf_set_val_u32(file, key(name).c_str(), static_cast<std::uint32_t>(value));
    };
    gguf_set_val_str(file, "general.architecture", architecture.c_str());
    gguf_set_val_str(file, "general.name", "Lumora's stand-in");
    gguf_set_val_f32(file, "general.sampling.temp", 0.9F);
    gguf_set_val_i32(file, "general.sampling.top_k", 50);
    gguf_set_val_f32(file, "general.sampling.top_p", 0.98F);
    gguf_set_val_f32(file, "general.sampling.min_p", 0.01F);
    number("context_length", contextLength);
    number("embedding_length", shape.width);
    number("block_count", shape.layers);
    number("feed_forward_length", shape.hidden);
    number("attention.head_count", shape.heads);
    number("attention.head_count_kv", shape.keyHeads);
    number("rope.dimension_count", shape.headSize());
    gguf_set_val_f32(file, key("rope.freq_base").c_str(), 1e6F);
    gguf_set_val_f32(file, key("attention.layer_norm_rms_epsilon").c_str(), 1e-5F);
    if (shape.grid) // how many pairs of a head's dimensions turn with the time, the row and the column
        gguf_set_arr_data(file, key("rope.dimension_sections").c_str(), GGUF_TYPE_INT32, gridSections.data(),
                          gridSections.size());
}

void addTensor(gguf_context *file, ggml_context *tensors, const Matrix &matrix, ggml_type matrixType)
{
    const bool isVector = matrix.rows == 1;
    const ggml_type type = isVector ? GGML_TYPE_F32 : matrixType;
    std::vector<std::int64_t> sides = matrix.sides;
    if (sides.empty())
        sides = isVector ? std::vector{matrix.columns} : std::vector{matrix.columns, matrix.rows};
    ggml_tensor *const tensor = ggml_new_tensor(tensors, type, static_cast<int>(sides.size()), sides.data());
    ggml_set_name(tensor, matrix.name.c_str());
    if (type == GGML_TYPE_F32)
        std::memcpy(tensor->data, matrix.values.data(), ggml_nbytes(tensor));
    else
        ggml_quantize_chunk(type, matrix.values.data(), tensor->data, 0, matrix.rows, matrix.columns, nullptr);
    gguf_add_tensor(file, tensor);
}

bool write(const std::string &path, gguf_context *file, const std::vector<Matrix> &weights, ggml_type matrixType)
{
    std::size_t bytes = 0;
    for (const Matrix &matrix : weights)
        bytes += matrix.values.size() * sizeof(float) + ggml_tensor_overhead() + 64;
    const std::unique_ptr<ggml_context, Deleter> tensors(ggml_init({bytes, nullptr, false}));
    for (const Matrix &matrix : weights)
        addTensor(file, tensors.get(), matrix, matrixType);
    return gguf_write_to_file(file, path.c_str(), false);
}

bool write(const Arguments &arguments)
{
    const std::unique_ptr<gguf_context, Deleter> file(gguf_init_empty());
    if (arguments.projector) {
        const ProjectorKind kind = arguments.grid ? ProjectorKind::grid : ProjectorKind::quarters;
        describeProjector(file.get(), kind, Shape().width);
        return write(arguments.path, file.get(), projectorWeights(kind, Shape().width), GGML_TYPE_F32);
    }
    const Vocabulary vocabulary(arguments.bench ? benchVocabulary : 0);
    Shape shape = arguments.bench ? Shape{1024, 12, 16, 4, 2816} : Shape();
    shape.grid = arguments.grid;
    describe(file.get(), shape);
    describeVocabulary(file.get(), vocabulary);
    const std::vector<Matrix> weights =
        arguments.bench ? randomWeights(shape, vocabulary) : talkingWeights(shape, vocabulary, arguments.behaviour);
    return write(arguments.path, file.get(), weights, arguments.bench ? GGML_TYPE_Q8_0 : GGML_TYPE_F16);
}

} // namespace

/// Writes a small language model that says nothing sensible, and behaves like one that does; or a projector for it.
int main(int argc, char **argv)
{
    const auto arguments = parse(std::vector<std::string_view>(argv + 1, argv + argc));
    if (!arguments) {
        std::fputs("usage: lumora-tiny-model OUT.gguf [--kind model|projector] [--size tiny|bench] "
                   "[--image-positions line|grid] [--call-tool once|always] [--ends never]\n",
                   stderr);
        return EXIT_FAILURE;
    }
    if (!write(*arguments)) {
        std::fprintf(stderr, "lumora-tiny-model: %s could not be written\n", arguments->path.c_str());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
