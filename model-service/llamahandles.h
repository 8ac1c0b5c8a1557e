// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <llama.h>

#include <memory>

namespace lumora::service {

struct LlamaDeleter
{
    void operator()(llama_model *model) const { llama_model_free(model); }
    void operator()(llama_context *context) const { llama_free(context); }
    void operator()(llama_sampler *sampler) const { llama_sampler_free(sampler); }
};

using ModelHandle = std::unique_ptr<llama_model, LlamaDeleter>;
using ContextHandle = std::unique_ptr<llama_context, LlamaDeleter>;
using SamplerHandle = std::unique_ptr<llama_sampler, LlamaDeleter>;

} // namespace lumora::service
