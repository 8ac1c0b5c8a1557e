// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// In the place of llamaimages.cpp where there is no libmtmd.

#include "core/failure.h"
#include "llamaimages.h"

#include <utility>

namespace lumora::service {

struct LlamaImages::State
{
};

LlamaImages::LlamaImages(std::unique_ptr<State> state)
    : m_state(std::move(state))
{
}

LlamaImages::~LlamaImages() = default;

std::unique_ptr<LlamaImages> LlamaImages::load(const std::string &path, const llama_model *, const std::stop_token &)
{
    throw badFile(path, "this engine reads no images");
}

std::vector<PreparedImage> LlamaImages::prepare(std::span<const wire::Image>)
{
    return {};
}

std::size_t LlamaImages::size(std::size_t) const
{
    return 0;
}

std::int32_t LlamaImages::positions(std::size_t) const
{
    return 0;
}

bool LlamaImages::evaluate(std::size_t, llama_context *, llama_pos, const std::stop_token &)
{
    return false;
}

} // namespace lumora::service
