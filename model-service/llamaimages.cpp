// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamaimages.h"

#include "core/failure.h"
#include "core/ggufheader.h"
#include "core/machine.h"
#include "llamafacts.h"

#include <gguf.h>

#include <algorithm>
#include <mtmd-helper.h>
#include <mtmd.h>
#include <utility>

namespace lumora::service {

namespace {

struct Deleter
{
    void operator()(mtmd_context *context) const { mtmd_free(context); }
    void operator()(mtmd_bitmap *bitmap) const { mtmd_bitmap_free(bitmap); }
    void operator()(mtmd_input_chunks *chunks) const { mtmd_input_chunks_free(chunks); }
    void operator()(gguf_context *file) const { gguf_free(file); }
};

using ProjectorHandle = std::unique_ptr<mtmd_context, Deleter>;
using BitmapHandle = std::unique_ptr<mtmd_bitmap, Deleter>;
using ChunksHandle = std::unique_ptr<mtmd_input_chunks, Deleter>;

struct Picture
{
    wire::Image image;
    ChunksHandle chunks;
    std::vector<std::vector<float>> computed; // of each chunk; empty until it was
};

struct Stretch
{
    const mtmd_input_chunk *chunk = nullptr;
    std::vector<float> *computed = nullptr;
};

/// Throws Failure where the file is not a whole projector: libmtmd would not notice that the last tensor is cut.
std::int64_t sizeOfProjector(const std::string &path)
{
    const GgufHeader header = readGgufHeader(path);
    if (header.architecture != "clip")
        throw badFile(path, "it is not the image part of a model");
    if (header.fileSize > availableMemory())
        throw noMemoryFor(path);
    const std::unique_ptr<gguf_context, Deleter> file(gguf_init_from_file(path.c_str(), {true, nullptr}));
    if (!file)
        throw badFile(path, "it is damaged");
    for (std::int64_t i = 0; i < gguf_get_n_tensors(file.get()); ++i) {
        const std::size_t start = gguf_get_data_offset(file.get()) + gguf_get_tensor_offset(file.get(), i);
        if (start + gguf_get_tensor_size(file.get(), i) > static_cast<std::size_t>(header.fileSize))
            throw badFile(path, "it is incomplete");
    }
    return header.fileSize;
}

std::string reasonNotToLoad()
{
    if (hasComplainedOf("mismatch between text model"))
        return "it belongs to another model";
    return "it is damaged, or of a kind that this version does not know";
}

} // namespace

struct LlamaImages::State
{
    bool compute(const Stretch &stretch) const;
    static bool watch(ggml_tensor *tensor, bool ask, void *state);
    Picture cut(const wire::Image &image) const;

    ProjectorHandle projector;
    std::size_t width = 0; // numbers that one token's place takes
    std::vector<Picture> pictures;
    std::vector<Stretch> stretches;
    std::stop_token stop; // of the computation that runs
};

LlamaImages::LlamaImages(std::unique_ptr<State> state)
    : m_state(std::move(state))
{
}

LlamaImages::~LlamaImages() = default;

std::unique_ptr<LlamaImages> LlamaImages::load(const std::string &path, const llama_model *model,
                                               const std::stop_token &stop)
{
    const std::int64_t fileSize = sizeOfProjector(path);
    mtmd_helper_log_set(logReceiver(), nullptr);
    forgetErrors();

    auto state = std::make_unique<State>();
    std::stop_token token = stop;
    mtmd_context_params parameters = mtmd_context_params_default();
    parameters.print_timings = false;
    parameters.n_threads = threadsFor(fileSize, physicalCores());
    parameters.cb_eval = State::watch;
    parameters.cb_eval_user_data = state.get();
    parameters.progress_callback = goesOn;
    parameters.progress_callback_user_data = &token;
    for (const bool usesGraphics : {true, false}) {
        parameters.use_gpu = usesGraphics;
        if (!state->projector && (!usesGraphics || llama_supports_gpu_offload()))
            state->projector.reset(mtmd_init_from_file(path.c_str(), model, parameters));
        if (stop.stop_requested())
            throw cancelled();
    }
    if (!state->projector || !mtmd_support_vision(state->projector.get()))
        throw badFile(path, reasonNotToLoad());
    state->width = static_cast<std::size_t>(llama_model_n_embd_inp(model));
    return std::unique_ptr<LlamaImages>(new LlamaImages(std::move(state)));
}

std::vector<PreparedImage> LlamaImages::prepare(std::span<const wire::Image> images)
{
    std::vector<Picture> pictures;
    for (const wire::Image &image : images) {
        const auto known = std::ranges::find(m_state->pictures, image, &Picture::image);
        pictures.push_back(known != m_state->pictures.end() ? std::move(*known) : m_state->cut(image));
    }
    m_state->pictures = std::move(pictures);
    m_state->stretches.clear();

    std::vector<PreparedImage> prepared;
    for (Picture &picture : m_state->pictures) {
        PreparedImage &parts = prepared.emplace_back();
        for (std::size_t i = 0; i < picture.computed.size(); ++i) {
            const mtmd_input_chunk *const chunk = mtmd_input_chunks_get(picture.chunks.get(), i);
            std::size_t size = mtmd_input_chunk_get_n_tokens(chunk);
            if (mtmd_input_chunk_get_type(chunk) == MTMD_INPUT_CHUNK_TYPE_TEXT) {
                const llama_token *const tokens = mtmd_input_chunk_get_tokens_text(chunk, &size);
                std::vector<Token> &marks = std::get<0>(parts.emplace_back(std::vector<Token>(tokens, tokens + size)));
                std::erase(marks, LLAMA_TOKEN_NULL); // a mark for which the model has no token
            } else {
                parts.emplace_back(ImageStretch{m_state->stretches.size(), size});
                m_state->stretches.push_back({chunk, &picture.computed[i]});
            }
        }
    }
    return prepared;
}

Picture LlamaImages::State::cut(const wire::Image &image) const
{
    const BitmapHandle bitmap(mtmd_bitmap_init(static_cast<std::uint32_t>(image.width),
                                               static_cast<std::uint32_t>(image.height),
                                               reinterpret_cast<const unsigned char *>(image.pixels.data())));
    const mtmd_input_part part = {nullptr, bitmap.get()};
    const mtmd_input_part *const parts = &part;
    ChunksHandle chunks(mtmd_input_chunks_init());
    if (mtmd_tokenize_from_parts(projector.get(), chunks.get(), &parts, 1, false) != 0)
        throw internalFailure("an image could not be prepared");
    const std::size_t count = mtmd_input_chunks_size(chunks.get());
    return {image, std::move(chunks), std::vector<std::vector<float>>(count)};
}

std::size_t LlamaImages::size(std::size_t number) const
{
    return mtmd_input_chunk_get_n_tokens(m_state->stretches.at(number).chunk);
}

std::int32_t LlamaImages::positions(std::size_t number) const
{
    return mtmd_input_chunk_get_n_pos(m_state->stretches.at(number).chunk);
}

bool LlamaImages::evaluate(std::size_t number, llama_context *context, llama_pos position, const std::stop_token &stop)
{
    const Stretch &stretch = m_state->stretches.at(number);
    mtmd_context *const projector = m_state->projector.get();
    // Where every token of a stretch sees the later ones, too, all of them must go through at once.
    if (mtmd_decode_use_non_causal(projector, stretch.chunk) && size(number) > llama_n_ubatch(context))
        return false;
    m_state->stop = stop;
    if (stretch.computed->empty() && !m_state->compute(stretch))
        return false;
    llama_pos end = 0;
    return mtmd_helper_decode_image_chunk(projector, context, stretch.chunk, stretch.computed->data(), position, 0,
                                          static_cast<std::int32_t>(llama_n_batch(context)), &end, nullptr,
                                          nullptr) == 0;
}

bool LlamaImages::State::compute(const Stretch &stretch) const
{
    if (mtmd_encode_chunk(projector.get(), stretch.chunk) != 0 || stop.stop_requested())
        return false;
    const float *const numbers = mtmd_get_output_embd(projector.get());
    stretch.computed->assign(numbers, numbers + width * mtmd_input_chunk_get_n_tokens(stretch.chunk));
    return true;
}

// ggml asks before each node of the graph whether to stop after it for a look, and goes no further where that gives
// false.
bool LlamaImages::State::watch(ggml_tensor *tensor, bool ask, void *state)
{
    if (ask)
        return tensor->op == GGML_OP_MUL_MAT || tensor->op == GGML_OP_FLASH_ATTN_EXT; // the ones that take long
    return !static_cast<const State *>(state)->stop.stop_requested();
}

} // namespace lumora::service
