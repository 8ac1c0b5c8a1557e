// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "llamacontext.h"
#include "llamahandles.h"
#include "llamaimages.h"
#include "llamasampler.h"
#include "llamavocabulary.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora::service {

/// The engine on libllama.
class LlamaEngine final : public Engine
{
public:
    /// backendFolder: where ggml's backends lie; empty = where the library itself looks for them.
    explicit LlamaEngine(const std::string &backendFolder);
    ~LlamaEngine() override;

    /// Without one for the processor nothing can be computed, whatever the file.
    static bool hasProcessorBackend();

    std::string load(const std::string &path, std::optional<std::int64_t> contextLimit,
                     const std::stop_token &stop) override;
    void loadProjector(const std::string &path, const std::stop_token &stop) override;
    bool readsImages() const override { return m_images != nullptr; }
    std::size_t contextSize() const override { return m_contextSize; }
    SamplingDefaults samplingDefaults() const override;
    std::vector<Token> tokenize(std::string_view text, SpecialTokens special) const override;
    std::optional<Token> openingToken() const override;
    const std::vector<std::string> &specialTexts() const override;
    std::string tokenBytes(Token token) const override;
    bool endsTurn(Token token) const override;
    std::optional<std::string> applyTemplate(std::span<const ChatMessage> messages) const override;
    std::vector<PreparedImage> prepareImages(std::span<const wire::Image> images) override;
    std::size_t keep(std::size_t count) override;
    std::size_t evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop) override;
    std::size_t evaluateImage(std::size_t number, std::size_t position, const std::stop_token &stop) override;
    std::unique_ptr<ComputedState> copyState(std::size_t mostBytes) const override;
    bool restoreState(const ComputedState &state) override;
    void startSampling(const SamplingSettings &settings) override;
    void setGrammar(const std::string &gbnf) override;
    Token sample() override;

private:
    struct Loading;

    void unload();
    void run(const Loading &loading);
    bool loadModel(const Loading &loading, bool usesGraphics);
    std::int64_t chooseContext(const Loading &loading) const;
    bool makeContext(const Loading &loading, std::int64_t size);
    bool warmUp(const Loading &loading);

    ModelHandle m_model;
    std::unique_ptr<LlamaVocabulary> m_vocabulary;
    std::unique_ptr<LlamaContext> m_context;
    std::unique_ptr<LlamaImages> m_images; // null: the model reads none
    std::unique_ptr<LlamaSampler> m_sampler;
    std::size_t m_contextSize = 0;
};

} // namespace lumora::service
