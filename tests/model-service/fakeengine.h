// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumora::service {

/// An engine that says what it is told to. Each byte is a token of its own; what it says may come in longer tokens.
/// Of an image it makes "<", a stretch of its width, "|", a stretch of its height, and ">".
/// It checks that it is always asked to evaluate right after what it holds, and to keep no part of a stretch.
struct FakeEngine final : Engine
{
    std::string load(const std::string &path, std::optional<std::int64_t> contextLimit,
                     const std::stop_token &stop) override;
    void loadProjector(const std::string &path, const std::stop_token &stop) override;
    bool readsImages() const override { return sees; }
    std::size_t contextSize() const override { return size; }
    SamplingDefaults samplingDefaults() const override { return {}; }
    std::vector<Token> tokenize(std::string_view text, SpecialTokens special) const override;
    std::optional<Token> openingToken() const override { return opening; }
    const std::vector<std::string> &specialTexts() const override { return specials; }
    std::string tokenBytes(Token token) const override;
    bool endsTurn(Token token) const override { return token == endToken; }
    std::optional<std::string> applyTemplate(std::span<const ChatMessage> messages) const override;
    std::vector<PreparedImage> prepareImages(std::span<const wire::Image> images) override;
    std::size_t keep(std::size_t count) override;
    std::size_t evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop) override;
    std::size_t evaluateImage(std::size_t number, std::size_t position, const std::stop_token &stop) override;
    std::unique_ptr<ComputedState> copyState(std::size_t mostBytes) const override;
    bool restoreState(const ComputedState &state) override;
    void startSampling(const SamplingSettings &settings) override { sampling = settings; }
    void setGrammar(const std::string &gbnf) override { grammar = gbnf; }
    Token sample() override;

    /// What the model writes next, token by token; after all of it, it ends its turns at once.
    void write(const std::vector<std::string> &written);

    /// The same, and then the end of its turn.
    void say(const std::vector<std::string> &written);

    /// What the engine has read and written, special tokens as they are written, and the first byte of an image at each
    /// of its places.
    std::string heldText() const;

    static constexpr Token endToken = 256;
    static constexpr Token firstSpecial = 300;
    static constexpr Token firstOfImages = -1000; // and -1001 for the byte 1, and so on

    std::size_t size = 4096;
    std::optional<Token> opening;
    std::vector<std::string> specials = {"<|system|>", "<|user|>", "<|assistant|>", "<|end|>"};
    bool knowsTemplate = true;
    std::string turnOpening; // what the template puts after the assistant's mark
    bool goesBack = true;
    bool sees = false;
    bool stopsAtImages = false;             // as if it had been stopped there
    std::vector<std::string> endless;       // what it writes again and again, instead of anything else
    std::function<void()> beforeEvaluation; // on the thread that evaluates
    std::optional<std::size_t> stopAfter;   // of an evaluation's tokens: it ends there, as if it had been stopped

    struct Stretch
    {
        std::size_t size = 0;
        char byte = 0;
    };

    std::vector<Stretch> prepared;
    std::size_t bytesPerToken = 1;                              // of a copied state
    std::vector<std::pair<std::size_t, std::size_t>> stretches; // that are held: start and size
    std::vector<Token> held;
    std::vector<std::size_t> evaluations; // tokens in each
    std::string grammar;
    std::vector<std::string> grammars; // that were in force when a token was sampled, each once
    SamplingSettings sampling;
    std::vector<std::string> loads;

    Token tokenFor(const std::string &piece);

    std::deque<Token> script; // what it writes next
    std::map<std::string, Token> pieces;
    std::size_t endlessAt = 0;
};

} // namespace lumora::service
