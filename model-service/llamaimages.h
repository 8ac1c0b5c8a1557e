// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"

#include <llama.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora::service {

/// What lets a model read images: a projector file in libmtmd. Where the build has no libmtmd, no file loads.
class LlamaImages
{
public:
    /// The model must outlive it. Throws Failure: badFile, noMemory, cancelled.
    static std::unique_ptr<LlamaImages> load(const std::string &path, const llama_model *model,
                                             const std::stop_token &stop);
    ~LlamaImages();
    LlamaImages(const LlamaImages &) = delete;
    LlamaImages &operator=(const LlamaImages &) = delete;

    /// As of Engine. What was computed of an image stays as long as the same one is prepared again.
    std::vector<PreparedImage> prepare(std::span<const wire::Image> images);

    /// Tokens that a prepared stretch takes.
    std::size_t size(std::size_t number) const;

    /// Positions that it takes.
    std::int32_t positions(std::size_t number) const;

    /// Computes a stretch, unless it is still known, and puts it into the context from the position on. False where
    /// that did not come to its end: a stop was requested, or it failed; the context may hold some of the stretch then.
    bool evaluate(std::size_t number, llama_context *context, llama_pos position, const std::stop_token &stop);

private:
    struct State;

    explicit LlamaImages(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

} // namespace lumora::service
