// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/chatvocabulary.h"
#include "core/sampling.h"
#include "wire/messages.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumora::service {

/// A stretch of an image, which a model reads as a whole.
struct ImageStretch
{
    std::size_t number = 0; ///< among those of all images that were prepared together
    std::size_t size = 0;   ///< tokens that it takes in the context

    bool operator==(const ImageStretch &) const = default;
};

/// What stands for an image, in order: its stretches, and the tokens with which the model marks where they begin and
/// end.
using PreparedImage = std::vector<std::variant<std::vector<Token>, ImageStretch>>;

/// What an engine has computed for a sequence, put aside. It belongs to the model that was loaded then.
class ComputedState
{
public:
    ComputedState() = default;
    virtual ~ComputedState() = default;
    ComputedState(const ComputedState &) = delete;
    ComputedState &operator=(const ComputedState &) = delete;

    virtual std::size_t bytes() const = 0;
};

/// What runs a model: one model, one sequence of tokens. Used by one thread; a stop may be requested by another.
/// Everything but load and contextSize needs a loaded model.
class Engine : public ChatVocabulary
{
public:
    /// Frees the model that was loaded, also where the new one does not load. Throws Failure: badFile, noMemory,
    /// cancelled. contextLimit: tokens. Returns a description for the log.
    virtual std::string load(const std::string &path, std::optional<std::int64_t> contextLimit,
                             const std::stop_token &stop) = 0;

    /// Lets the model that is loaded read images. Throws Failure, after which it reads text as before: badFile,
    /// noMemory, cancelled.
    virtual void loadProjector(const std::string &path, const std::stop_token &stop) = 0;

    virtual bool readsImages() const = 0;

    /// Tokens; 0 while no model is loaded.
    virtual std::size_t contextSize() const = 0;

    virtual SamplingDefaults samplingDefaults() const = 0;

    /// The bytes that a token writes, which need not be whole characters. Empty for a special token, apart from the
    /// marks of a thought.
    virtual std::string tokenBytes(Token token) const = 0;

    /// The token says that the model's turn is over.
    virtual bool endsTurn(Token token) const = 0;

    /// Gets images ready to be evaluated, in the place of those that were ready before. Needs a model that reads
    /// images. Throws Failure.
    virtual std::vector<PreparedImage> prepareImages(std::span<const wire::Image> images) = 0;

    /// Forgets what was evaluated after the first count tokens, which cut no stretch of an image in two. Returns how
    /// many remain: count, or 0 where the model cannot go back to there.
    virtual std::size_t keep(std::size_t count) = 0;

    /// Evaluates tokens that follow the first position ones, so that the next can be sampled. Returns how many tokens
    /// stand evaluated then, all together: fewer than asked for where a stop was requested meanwhile. Throws Failure,
    /// after which nothing is evaluated.
    virtual std::size_t evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop) = 0;

    /// Evaluates a stretch of the images that were prepared last, which follows the first position tokens. Returns as
    /// evaluate does: a stretch is evaluated as a whole or not at all.
    virtual std::size_t evaluateImage(std::size_t number, std::size_t position, const std::stop_token &stop) = 0;

    /// A copy of what is evaluated; null where it takes more bytes than that, or cannot be had.
    virtual std::unique_ptr<ComputedState> copyState(std::size_t mostBytes) const = 0;

    /// Puts such a copy in the place of what is evaluated. False: nothing is evaluated then.
    virtual bool restoreState(const ComputedState &state) = 0;

    virtual void startSampling(const SamplingSettings &settings) = 0;

    /// Binds what is sampled from here on to a grammar in GBNF with the start symbol "root"; an empty text frees it.
    /// Throws Failure where the grammar cannot be used.
    virtual void setGrammar(const std::string &gbnf) = 0;

    /// Chooses the token that follows what was evaluated.
    virtual Token sample() = 0;
};

} // namespace lumora::service
