// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamaengine.h"

#include "core/contextsize.h"
#include "core/failure.h"
#include "core/ggufheader.h"
#include "core/machine.h"
#include "llamafacts.h"

#include <algorithm>
#include <utility>

namespace lumora::service {

namespace {

constexpr std::size_t batchSize = 512; // tokens that are evaluated in one go

bool isStopRequested(void *stop)
{
    const bool requested = static_cast<const std::stop_token *>(stop)->stop_requested();
    if (requested)
        muteLog(true);
    return requested;
}

bool goesOn(float, void *stop)
{
    return !static_cast<const std::stop_token *>(stop)->stop_requested();
}

const char *roleName(ChatMessage::Role role)
{
    switch (role) {
    case ChatMessage::Role::system:
        return "system";
    case ChatMessage::Role::user:
        return "user";
    case ChatMessage::Role::assistant:
        break;
    }
    return "assistant";
}

} // namespace

struct LlamaEngine::Loading
{
    const std::string &path;
    std::optional<std::int64_t> contextLimit;
    std::stop_token stop;
    GgufHeader header;
    std::int64_t availableBytes = 0; // before anything was loaded
};

LlamaEngine::LlamaEngine(const std::string &backendFolder)
{
    receiveLog();
    llama_backend_init();
    if (backendFolder.empty())
        ggml_backend_load_all();
    else
        ggml_backend_load_all_from_path(backendFolder.c_str());
}

bool LlamaEngine::hasProcessorBackend()
{
    return ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_CPU) != nullptr;
}

LlamaEngine::~LlamaEngine()
{
    unload();
    llama_backend_free();
}

std::string LlamaEngine::load(const std::string &path, std::optional<std::int64_t> contextLimit,
                              const std::stop_token &stop)
{
    unload();
    const Loading loading{path, contextLimit, stop, readGgufHeader(path), availableMemory()};
    requireLanguageModel(loading.header, path);
    if (loading.header.fileSize > loading.availableBytes)
        throw noMemoryFor(path);
    try {
        loadModel(loading, -1);
        makeContext(loading);
        warmUp(loading);
    } catch (const Failure &) {
        unload();
        throw;
    }
    return describe(m_model.get());
}

void LlamaEngine::unload()
{
    m_contextSize = 0;
    m_sampler.reset();
    m_context.reset();
    m_vocabulary.reset();
    m_model.reset();
}

void LlamaEngine::loadModel(const Loading &loading, int gpuLayers)
{
    std::stop_token stop = loading.stop;
    llama_model_params parameters = llama_model_default_params();
    parameters.n_gpu_layers = gpuLayers;
    parameters.progress_callback = goesOn;
    parameters.progress_callback_user_data = &stop;
    m_model.reset(llama_model_load_from_file(loading.path.c_str(), parameters));
    if (stop.stop_requested())
        throw cancelled();
    if (!m_model && gpuLayers != 0 && llama_supports_gpu_offload())
        return loadModel(loading, 0); // the graphics memory may be too small
    if (!m_model)
        throw badFile(loading.path, reasonOfLastError(loading.header.architecture));
    if (const auto reason = reasonNotToConverse(m_model.get()))
        throw badFile(loading.path, *reason);
    m_vocabulary = std::make_unique<LlamaVocabulary>(llama_model_get_vocab(m_model.get()));
}

void LlamaEngine::makeContext(const Loading &loading)
{
    const auto size = chooseContextSize({.trainedTokens = llama_model_n_ctx_train(m_model.get()),
                                         .requestedTokens = loading.contextLimit,
                                         .bytesPerToken = contextBytesPerToken(m_model.get(), batchSize),
                                         .freeBytes = loading.availableBytes - loading.header.fileSize});
    if (!size)
        throw noMemoryFor(loading.path);
    llama_context_params parameters = llama_context_default_params();
    parameters.n_ctx = static_cast<std::uint32_t>(*size);
    parameters.n_batch = batchSize;
    parameters.n_ubatch = batchSize;
    parameters.n_seq_max = 1;
    parameters.n_outputs_max = 1;
    parameters.n_threads = threadsFor(loading.header.fileSize, physicalCores());
    parameters.n_threads_batch = parameters.n_threads;
    parameters.abort_callback = isStopRequested;
    parameters.abort_callback_data = &m_stop;
    parameters.no_perf = true;
    parameters.swa_full = true; // so that one can go back to any earlier token
    m_context.reset(llama_init_from_model(m_model.get(), parameters));
    if (!m_context)
        throw noMemoryFor(loading.path);
    if (llama_get_memory(m_context.get()) == nullptr)
        throw badFile(loading.path, "it is not a model that writes text");
    m_contextSize = std::min<std::size_t>(static_cast<std::size_t>(*size), llama_n_ctx(m_context.get()));
}

// Reads the weights from the disk before the first request has to, and shows that they can be computed with.
void LlamaEngine::warmUp(const Loading &loading)
{
    const Token token = openingToken().value_or(0);
    if (evaluate({&token, 1}, 0, loading.stop) == 0)
        throw cancelled();
    keep(0);
}

SamplingDefaults LlamaEngine::samplingDefaults() const
{
    return samplingDefaultsOf(m_model.get());
}

std::vector<Token> LlamaEngine::tokenize(std::string_view text, SpecialTokens special) const
{
    return m_vocabulary->tokenize(text, special);
}

std::optional<Token> LlamaEngine::openingToken() const
{
    return m_vocabulary->openingToken();
}

const std::vector<std::string> &LlamaEngine::specialTexts() const
{
    return m_vocabulary->specialTexts();
}

std::string LlamaEngine::tokenBytes(Token token) const
{
    return m_vocabulary->tokenBytes(token);
}

bool LlamaEngine::endsTurn(Token token) const
{
    return m_vocabulary->endsTurn(token);
}

std::optional<std::string> LlamaEngine::applyTemplate(std::span<const ChatMessage> messages) const
{
    const char *const layout = llama_model_chat_template(m_model.get(), nullptr);
    if (layout == nullptr)
        return std::nullopt;
    std::vector<llama_chat_message> chat;
    std::size_t characters = 0;
    for (const ChatMessage &message : messages) {
        chat.push_back({roleName(message.role), message.content.c_str()});
        characters += message.content.size();
    }
    std::string text(2 * characters + 1024, '\0');
    for (;;) {
        const int size = llama_chat_apply_template(layout, chat.data(), chat.size(), true, text.data(),
                                                   static_cast<int>(text.size()));
        if (size < 0)
            return std::nullopt;
        const bool fits = static_cast<std::size_t>(size) <= text.size();
        text.resize(static_cast<std::size_t>(size));
        if (fits)
            return text;
    }
}

std::size_t LlamaEngine::keep(std::size_t count)
{
    llama_memory_t memory = llama_get_memory(m_context.get());
    const auto position = static_cast<llama_pos>(count);
    if (count > 0 && llama_memory_seq_rm(memory, 0, position, -1) &&
        llama_memory_seq_pos_max(memory, 0) == position - 1 &&
        (!goesBack() || llama_memory_seq_pos_min(memory, 0) == 0))
        return count;
    llama_memory_clear(memory, false);
    return 0;
}

std::size_t LlamaEngine::evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop)
{
    llama_memory_t memory = llama_get_memory(m_context.get());
    m_stop = stop;
    std::vector<Token> batch;
    for (std::size_t done = 0; done < tokens.size(); done += batch.size()) {
        if (stop.stop_requested())
            return position + done;
        const auto part = tokens.subspan(done, std::min(batchSize, tokens.size() - done));
        batch.assign(part.begin(), part.end());
        const int result =
            llama_decode(m_context.get(), llama_batch_get_one(batch.data(), static_cast<int>(batch.size())));
        muteLog(false);
        if (result == 0)
            continue;
        // An aborted evaluation leaves what it completed, but a state that cannot go back may be half-way on.
        if (result == 2 && goesBack()) {
            const llama_pos next = llama_memory_seq_pos_max(memory, 0) + 1;
            return static_cast<std::size_t>(next);
        }
        llama_memory_clear(memory, false);
        if (result == 2)
            return 0;
        throw internalFailure("the evaluation ended with " + std::to_string(result));
    }
    return position + tokens.size();
}

bool LlamaEngine::goesBack() const
{
    return !llama_model_is_recurrent(m_model.get()) && !llama_model_is_hybrid(m_model.get());
}

void LlamaEngine::startSampling(const SamplingSettings &settings)
{
    m_sampler = std::make_unique<LlamaSampler>(*m_vocabulary, settings);
}

void LlamaEngine::setGrammar(const std::string &gbnf)
{
    m_sampler->setGrammar(gbnf);
}

Token LlamaEngine::sample()
{
    return m_sampler->sample(m_context.get());
}

} // namespace lumora::service
