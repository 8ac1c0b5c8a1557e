// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "core/positions.h"
#include "llamahandles.h"
#include "llamaimages.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>

namespace lumora::service {

/// The state that a model has computed, of one sequence of tokens and stretches of images.
class LlamaContext
{
public:
    /// The model must outlive it.
    explicit LlamaContext(ContextHandle context);

    // As of Engine.
    std::size_t keep(std::size_t count);
    std::size_t evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop);
    std::size_t evaluateImage(LlamaImages &images, std::size_t number, std::size_t position,
                              const std::stop_token &stop);

    std::unique_ptr<ComputedState> copyState(std::size_t mostBytes) const;
    bool restoreState(const ComputedState &state);

    llama_context *handle() const { return m_context.get(); }

private:
    class State;

    std::int32_t decode(std::span<const Token> tokens, llama_pos position);
    bool cut(std::size_t count);
    std::size_t clear();
    std::size_t held() const;
    llama_memory_t memory() const;
    bool goesBack() const;

    std::stop_token m_stop; // of the evaluation that runs
    Positions m_positions;
    ContextHandle m_context;
};

} // namespace lumora::service
