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
    const Loading loading{path, contextLimit, stop, readModelHeader(path), availableMemory()};
    forgetErrors();
    if (loading.header.fileSize > loading.availableBytes)
        throw noMemoryFor(path);
    try {
        run(loading);
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
    m_images.reset();
    m_context.reset();
    m_vocabulary.reset();
    m_model.reset();
}

// The graphics memory may be too small for the model or for its context, and the estimate of the other may be wrong.
void LlamaEngine::run(const Loading &loading)
{
    bool usesGraphics = loadModel(loading, llama_supports_gpu_offload());
    Attempt attempt{usesGraphics, chooseContext(loading)};
    while (!makeContext(loading, attempt.contextSize) || !warmUp(loading)) {
        const auto next = nextAttempt(attempt);
        if (!next)
            throw noMemoryFor(loading.path);
        attempt = *next;
        m_context.reset();
        if (usesGraphics != attempt.usesGraphics) {
            unload();
            usesGraphics = loadModel(loading, attempt.usesGraphics);
        }
    }
}

/// Whether the model that is loaded then uses the graphics card.
bool LlamaEngine::loadModel(const Loading &loading, bool usesGraphics)
{
    std::stop_token stop = loading.stop;
    llama_model_params parameters = llama_model_default_params();
    parameters.n_gpu_layers = usesGraphics ? -1 : 0;
    parameters.progress_callback = goesOn;
    parameters.progress_callback_user_data = &stop;
    m_model.reset(llama_model_load_from_file(loading.path.c_str(), parameters));
    if (stop.stop_requested())
        throw cancelled();
    if (!m_model && usesGraphics)
        return loadModel(loading, false);
    if (!m_model)
        throw badFile(loading.path, reasonOfErrors(loading.header.architecture));
    if (const auto reason = reasonNotToConverse(m_model.get()))
        throw badFile(loading.path, *reason);
    m_vocabulary = std::make_unique<LlamaVocabulary>(llama_model_get_vocab(m_model.get()));
    return usesGraphics;
}

std::int64_t LlamaEngine::chooseContext(const Loading &loading) const
{
    const auto size = chooseContextSize({.trainedTokens = llama_model_n_ctx_train(m_model.get()),
                                         .requestedTokens = loading.contextLimit,
                                         .bytesPerToken = contextBytesPerToken(m_model.get(), batchSize),
                                         .freeBytes = loading.availableBytes - loading.header.fileSize});
    if (!size)
        throw noMemoryFor(loading.path);
    return *size;
}

/// False: there is not enough memory.
bool LlamaEngine::makeContext(const Loading &loading, std::int64_t size)
{
    llama_context_params parameters = llama_context_default_params();
    parameters.n_ctx = static_cast<std::uint32_t>(size);
    parameters.n_batch = batchSize;
    parameters.n_ubatch = batchSize;
    parameters.n_seq_max = 1;
    parameters.n_outputs_max = 1;
    parameters.n_threads = threadsFor(loading.header.fileSize, physicalCores());
    parameters.n_threads_batch = parameters.n_threads;
    parameters.no_perf = true;
    parameters.swa_full = true; // so that one can go back to any earlier token
    ContextHandle context(llama_init_from_model(m_model.get(), parameters));
    if (!context)
        return false;
    if (llama_get_memory(context.get()) == nullptr)
        throw badFile(loading.path, "it is not a model that writes text");
    m_contextSize = std::min<std::size_t>(static_cast<std::size_t>(size), llama_n_ctx(context.get()));
    m_context = std::make_unique<LlamaContext>(std::move(context));
    return true;
}

/// Reads the weights from the disk before the first request has to. False: they cannot be computed with; there may be
/// not enough memory.
bool LlamaEngine::warmUp(const Loading &loading)
{
    const Token token = openingToken().value_or(0);
    try {
        if (evaluate({&token, 1}, 0, loading.stop) == 0)
            throw cancelled();
    } catch (const Failure &failure) {
        if (failure.code() == wire::ErrorCode::cancelled)
            throw;
        return false;
    }
    keep(0);
    return true;
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
    return applyTemplateOf(m_model.get(), messages);
}

void LlamaEngine::loadProjector(const std::string &path, const std::stop_token &stop)
{
    m_images = LlamaImages::load(path, m_model.get(), stop);
}

std::vector<PreparedImage> LlamaEngine::prepareImages(std::span<const wire::Image> images)
{
    return m_images->prepare(images);
}

std::size_t LlamaEngine::keep(std::size_t count)
{
    return m_context->keep(count);
}

std::size_t LlamaEngine::evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop)
{
    return m_context->evaluate(tokens, position, stop);
}

std::size_t LlamaEngine::evaluateImage(std::size_t number, std::size_t position, const std::stop_token &stop)
{
    return m_context->evaluateImage(*m_images, number, position, stop);
}

std::unique_ptr<ComputedState> LlamaEngine::copyState(std::size_t mostBytes) const
{
    return m_context->copyState(mostBytes);
}

bool LlamaEngine::restoreState(const ComputedState &state)
{
    return m_context->restoreState(state);
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
    return m_sampler->sample(m_context->handle());
}

} // namespace lumora::service
